#pragma once

#include "servers/serverform.h"

// The form of a Server that reports to OneNET; two levels of qos are offered.
class ServerOneNetMQTTEditDialog : public ServerForm
{
    Q_OBJECT
public:
    // The workspace is not owned and may be null.
    ServerOneNetMQTTEditDialog(QStandardItem *item, Workspace *workspace);
};

#pragma once

#include "servers/serverform.h"

// The form of a Server that reports to OneNET, which knows two levels of qos only.
class ServerOneNetMQTTEditDialog : public ServerForm
{
    Q_OBJECT
public:
    // The workspace is not owned and may be null.
    ServerOneNetMQTTEditDialog(QStandardItem *item, Workspace *workspace);
};

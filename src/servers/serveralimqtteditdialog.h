#pragma once

#include "servers/serverform.h"

// The form of a Server that reports to Alibaba Cloud.
class ServerAliMQTTEditDialog : public ServerForm
{
    Q_OBJECT
public:
    // The workspace is not owned and may be null.
    ServerAliMQTTEditDialog(QStandardItem *item, Workspace *workspace);
};

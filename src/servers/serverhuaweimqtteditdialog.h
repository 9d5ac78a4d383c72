#pragma once

#include "servers/serverform.h"

// The form of a Server that reports to Huawei Cloud.
class ServerHuaWeiMQTTEditDialog : public ServerForm
{
    Q_OBJECT
public:
    // The workspace is not owned and may be null.
    ServerHuaWeiMQTTEditDialog(QStandardItem *item, Workspace *workspace);
};

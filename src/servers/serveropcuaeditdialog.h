#pragma once

#include "servers/serverform.h"

// The form of a Server by which a Box offers its data as an OPC UA server: the port and the log-in.
class ServerOPCUAEditDialog : public ServerForm
{
    Q_OBJECT
public:
    // The workspace is not owned and may be null.
    ServerOPCUAEditDialog(QStandardItem *item, Workspace *workspace);

public slots:
    void clearData() override;

private:
    ListField *m_anonymous;
};

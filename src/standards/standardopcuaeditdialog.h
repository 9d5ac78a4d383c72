#pragma once

#include "standards/standardtableform.h"

// The form of a Standard of protocol "OpcUA": a client of an OPC UA server, with its security and the nodes
// that it reads.
class standardOPCUAEditDialog : public StandardTableForm
{
    Q_OBJECT
public:
    // Writes the period's default into an empty role.
    standardOPCUAEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);

private:
    void addConnection();
    void updateUserVisibility();

    ListField *m_authentication = nullptr;
    TextField *m_username = nullptr;
    TextField *m_password = nullptr;
};

#pragma once

#include "standards/standardtableform.h"

class CertificateField;

// The form of a Standard of protocol "OpcUA": a client of an OPC UA server, with its security and the nodes
// that it reads.
class standardOPCUAEditDialog : public StandardTableForm
{
    Q_OBJECT
public:
    // Writes the period's default into an empty role.
    standardOPCUAEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);

public slots:
    void clearData() override;

protected:
    void showItem(QStandardItem *item) override;
    bool saveItem(QStandardItem *item) override;

private:
    void updateUserVisibility();

    CertificateField *m_certificate;
    CertificateField *m_key;
};

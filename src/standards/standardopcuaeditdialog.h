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
    // Checks of the table's items, each for its own columns; the length is that of the spatial index.
    void validateAddr(int row, int column);
    void validateChange(int row, int column);
    void validateFormula(int row, int column);
    void validateLength(int row, int column);

protected:
    void showItem(QStandardItem *item) override;
    bool saveItem(QStandardItem *item) override;

private:
    void updateUserVisibility();

    CertificateField *m_certificate;
    CertificateField *m_key;
};

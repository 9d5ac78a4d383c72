#pragma once

#include "model/itemref.h"
#include "widgets/editform.h"
#include "widgets/fieldtable.h"

#include <QVector>

class CertificateField;
class QFormLayout;
class QStandardItem;
class Workspace;

// The form of the project's one IEC61850 service: port, authentication, GOOSE publishing, and TLS with its
// certificates, whose content it reads from disk into the item.
class ServiceIEC61850EditDialog : public EditForm
{
    Q_OBJECT
public:
    // The item is not owned and must outlive the form's use of it; a null workspace takes no messages.
    ServiceIEC61850EditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
    ~ServiceIEC61850EditDialog() override;

    // Shows another Service item; what was typed and not saved is overwritten.
    void replaceItem(QStandardItem *item);

public slots:
    void saveChanges();
    void clearData();
    void updateSSLFieldsVisibility();
    void updateIsVerifyClientCertFieldsVisibility();

private:
    void buildFields(QFormLayout *form);
    void addCertificate(QFormLayout *form, const QString &label, CertificateField *field);
    void fill();
    void updatePasswordVisibility();
    // Writes one into the item; false if the form or the item was gone when its box closed.
    bool saveCertificate(int index);
    bool isChecked(const char *name) const;

    ItemRef m_item;
    Workspace *m_workspace; // Not owned; may be null.
    FieldTable m_service;   // the fields above the certificates
    FieldTable m_security;  // the fields between them
    // Root, server certificate, server key, then the ten clients.
    QVector<CertificateField *> m_certificates;
};

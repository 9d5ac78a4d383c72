#pragma once

#include "forms/editform.h"
#include "forms/fieldtable.h"
#include "model/itemref.h"

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
    // The item is not owned, must not be null and may be deleted before the form. Writes the port's default
    // into an empty role. The workspace, not owned, may be null.
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
    // Writes one into the item; false if the form was gone, or showed another item, when its box closed.
    bool saveCertificate(int index, QStandardItem *item);

    ItemRef m_item;
    Workspace *m_workspace; // Not owned; may be null.
    // The fields above the certificates are two tables: a save writes the key's password between them.
    FieldTable m_service;
    FieldTable m_switches;
    FieldTable m_security; // the fields between the certificates
    // Root, server certificate, server key, then the ten clients.
    QVector<CertificateField *> m_certificates;
};

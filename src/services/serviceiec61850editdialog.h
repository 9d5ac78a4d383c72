#pragma once

#include "forms/certificatefield.h"
#include "forms/definitionform.h"

// The form of the project's one IEC61850 service: port, authentication, GOOSE publishing, and TLS with its
// certificates, whose content it reads from disk into the item.
class ServiceIEC61850EditDialog : public DefinitionForm
{
    Q_OBJECT
public:
    // The item is not owned, must not be null and may be deleted before the form. Writes the port's default
    // into an empty role. The workspace, not owned, may be null.
    ServiceIEC61850EditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);

public slots:
    // Leaves the certificates alone.
    void clearData() override;
    void updateSSLFieldsVisibility();
    void updateIsVerifyClientCertFieldsVisibility();

private:
    void addService(QFormLayout *form);
    void addSecurity(QFormLayout *form);
    void addClients(QFormLayout *form);
    CertificateField *addCertificate(QFormLayout *form, CertificateField::Kind kind, const QString &label,
                                     int pathRole, int contentRole);
    QVector<FormPart *> parts();
    void updatePasswordVisibility();

    // A group each for the fields that a save writes without another part between them.
    FieldGroup m_service;
    FieldGroup m_keyPassword;
    FieldGroup m_switches;
    FieldGroup m_verification;
    QVector<CertificateField *> m_own; // root, server certificate, server key
    QVector<CertificateField *> m_clients;
    TextField *m_name;
    TextField *m_port;
    ListField *m_authentication;
    TextField *m_password;
    CheckField *m_ssl;
    TextField *m_serverKeyPassword;
    CheckField *m_verify;
};

#pragma once

#include "forms/fieldgroup.h"

#include <QComboBox>
#include <QDialog>
#include <QStringList>
#include <QVector>

// The modal dialog "Add Server": asks for what a new Server of any protocol needs, shows the inputs of the
// chosen one, and checks none of them. Only a second "ModbusTCP(Slave)" is refused.
class ServerInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ServerInputDialog(QWidget *parent = nullptr);
    ~ServerInputDialog() override;

    // The protocols of the Servers that the folder has already.
    void setExistingProtocols(const QStringList &protocols) { m_existingProtocols = protocols; }

    // These give what is in the inputs, also in those that the chosen protocol hides.
    QString name() const { return m_name->text(); }
    QString description() const { return m_description->text(); }
    // The key, whatever the list shows.
    QString protocol() const { return m_protocol->list()->currentData().toString(); }
    QString ip() const { return m_ip->text(); }
    QString port() const { return m_port->text(); }
    QString domain() const { return m_domain->text(); }

public slots:
    // Presets and shows what the protocol needs, which is given as the list shows it.
    void updateProtocolOptions(const QString &protocol);

private:
    void fillForm(QFormLayout *form);

    struct Option {
        unsigned input; // a ServerProtocol::Input
        QWidget *widget;
    };

    QStringList m_existingProtocols;
    FieldGroup m_fields;
    TextField *m_name = nullptr;
    TextField *m_description = nullptr;
    ListField *m_protocol = nullptr;
    TextField *m_ip = nullptr;
    TextField *m_port = nullptr;
    TextField *m_domain = nullptr;
    QVector<Option> m_options; // what only some protocols show
};

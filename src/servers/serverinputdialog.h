#pragma once

#include <QDialog>
#include <QStringList>
#include <QVector>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QValidator;

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

    // Also what is in an input that the chosen protocol hides.
    QString name() const;
    QString description() const;
    // The key, whatever the list shows.
    QString protocol() const;
    QString ip() const;
    QString port() const;
    QString domain() const;

public slots:
    // Presets and shows what the protocol needs, which is given as the list shows it.
    void updateProtocolOptions(const QString &protocol);

private:
    QLineEdit *makeEdit(const char *name, QValidator *validator = nullptr);
    void fillForm(QFormLayout *form);

    struct Option {
        unsigned input; // a ServerProtocol::Input
        QWidget *widget;
    };

    QStringList m_existingProtocols;
    QLineEdit *m_name;
    QLineEdit *m_description;
    QComboBox *m_protocol;
    QLineEdit *m_ip;
    QLineEdit *m_port;
    QLineEdit *m_domain;
    QVector<Option> m_options; // what only some protocols show
};

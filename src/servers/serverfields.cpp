#include "servers/serverfields.h"

#include "model/itemroles.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

namespace {

QVector<Field> identityStoredIn(int protocolRole, const QString &protocol)
{
    return {
        {"name", QT_TRANSLATE_NOOP("ServerFields", "Server Name:"), FieldKind::ReadOnly, Qt::DisplayRole},
        {"description", QT_TRANSLATE_NOOP("ServerFields", "Description:"), FieldKind::Text,
         serverDescriptionRole},
        {"protocol",
         QT_TRANSLATE_NOOP("ServerFields", "Protocol:"),
         FieldKind::List,
         protocolRole,
         FieldCheck::None,
         {protocol}},
    };
}

} // namespace

QVector<Field> ServerFields::identity(const QString &protocol)
{
    return identityStoredIn(serverProtocolRole, protocol);
}

QVector<Field> ServerFields::cloud(const QString &protocol)
{
    Field key{"protocolKey", "", FieldKind::List, serverProtocolRole, FieldCheck::None, {protocol}};
    key.isTranslated = false;
    return identityStoredIn(FieldTable::noRole, protocol) + QVector<Field>{key}
    + QVector<Field>{{"domainName", QT_TRANSLATE_NOOP("ServerFields", "Domain Name:"), FieldKind::Text,
                      serverDomainNameRole, FieldCheck::HostName}}
    + port();
}

QVector<Field> ServerFields::device()
{
    return {
        {"productKey", QT_TRANSLATE_NOOP("ServerFields", "Product Key:"), FieldKind::Text,
         serverProductKeyRole, FieldCheck::NoCjk},
        {"deviceName", QT_TRANSLATE_NOOP("ServerFields", "Device Name:"), FieldKind::Text,
         serverDeviceNameRole, FieldCheck::NoCjk},
        {"deviceSecret", QT_TRANSLATE_NOOP("ServerFields", "Device Secret:"), FieldKind::Password,
         serverDeviceSecretRole, FieldCheck::NoCjk},
    };
}

QVector<Field> ServerFields::port()
{
    return {{"port", QT_TRANSLATE_NOOP("ServerFields", "Port:"), FieldKind::Text, serverPortRole,
             FieldCheck::Port}};
}

QVector<Field> ServerFields::clientId()
{
    return {{"clientId", QT_TRANSLATE_NOOP("ServerFields", "Client ID:"), FieldKind::Text, serverClientIdRole,
             FieldCheck::NoCjk}};
}

QVector<Field> ServerFields::credentials(FieldKind password)
{
    return {
        {"username", QT_TRANSLATE_NOOP("ServerFields", "User Name:"), FieldKind::Text, serverUsernameRole,
         FieldCheck::NoCjk},
        {"password", QT_TRANSLATE_NOOP("ServerFields", "Password:"), password, serverPasswordRole,
         FieldCheck::NoCjk},
    };
}

QVector<Field> ServerFields::qos(const QStringList &levels)
{
    return {{"qos", QT_TRANSLATE_NOOP("ServerFields", "qos:"), FieldKind::List, serverQosRole,
             FieldCheck::None, levels, nullptr, "1"}};
}

Field ServerFields::patterned(const char *name, const char *label, FieldKind kind, int role,
                              const char *pattern)
{
    Field field{name, label, kind, role, FieldCheck::Pattern};
    field.pattern = pattern;
    return field;
}

Field ServerFields::coded(const char *name, const char *label, int role, const QVector<Choice> &choices)
{
    Field field{name, label, FieldKind::Coded, role};
    field.choices = choices;
    return field;
}

void ServerFields::lockProtocol(const FieldTable &fields)
{
    fields.comboBox(QStringLiteral("protocol"))->setEnabled(false);
    if (QComboBox *key = fields.comboBox(QStringLiteral("protocolKey"))) {
        // A hidden row would leave a gap; the widgets stay, as children of the page.
        const auto row = qobject_cast<QFormLayout *>(key->parentWidget()->layout())->takeRow(key);
        delete row.labelItem; // the layout's items, not the widgets
        delete row.fieldItem;
        key->hide();
        fields.label(QStringLiteral("protocolKey"))->hide();
    }
}

#include "servers/servereditdialog.h"

#include "model/itemroles.h"
#include "servers/javascripthighlighter.h"
#include "servers/serverfields.h"

#include <QRadioButton>
#include <QTextEdit>

namespace {

QVector<Field> payloadFields()
{
    return {
        {"payloadFormat",
         QT_TRANSLATE_NOOP("ServerEditDialog", "Payload Format:"),
         FieldKind::Numbered,
         serverPayloadFormatRole,
         FieldCheck::None,
         {QT_TRANSLATE_NOOP("ServerEditDialog", "Tarnwick MQTT"),
          QT_TRANSLATE_NOOP("ServerEditDialog", "Custom formatting")}},
        {"reportTopic", QT_TRANSLATE_NOOP("ServerEditDialog", "Report Topic:"), FieldKind::Text,
         serverReportTopicRole, FieldCheck::NoCjk},
        {"reportJS", QT_TRANSLATE_NOOP("ServerEditDialog", "Report JS:"), FieldKind::Script,
         serverReportJsRole},
        {"writeTopic", QT_TRANSLATE_NOOP("ServerEditDialog", "Write Topic:"), FieldKind::Text,
         serverWriteTopicRole, FieldCheck::NoCjk},
        {"writeJS", QT_TRANSLATE_NOOP("ServerEditDialog", "Write JS:"), FieldKind::Script, serverWriteJsRole},
    };
}

// On purpose: of the forms with a password, this one alone shows it as it is typed.
QVector<Field> mqttFields()
{
    return ServerFields::identity(QStringLiteral("MQTT"))
        + QVector<Field>{{"ip", QT_TRANSLATE_NOOP("ServerEditDialog", "IP Address:"), FieldKind::Text,
                          serverIpRole, FieldCheck::HostName}}
    + ServerFields::port() + ServerFields::clientId() + ServerFields::credentials(FieldKind::Text)
        + ServerFields::qos({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")})
        + payloadFields();
}

} // namespace

ServerEditDialog::ServerEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({"ServerEditDialog", QT_TRANSLATE_NOOP("ServerEditDialog", "Edit Server"),
                  QT_TRANSLATE_NOOP("ServerEditDialog", "The Server MQTT '%1' is saved successfully.")},
                 mqttFields(), item, workspace)
{
    ServerFields::lockProtocol(fields());
    for (const char *script : {"reportJS", "writeJS"}) {
        auto *edit = qobject_cast<QTextEdit *>(fields().widget(QLatin1String(script)));
        new JavaScriptHighlighter(edit->document());
        // The highlighter's colours are made for light ground, whatever the desktop's is.
        edit->setStyleSheet(QStringLiteral("QTextEdit:enabled { background-color: white; color: black; }"));
    }
    // Either signal tells what its own button stands for, whatever it says: the button that loses the check
    // signals first, so that the last word is the checked one's. Opening checks one of the two.
    const QWidget *formats = fields().widget(QStringLiteral("payloadFormat"));
    connect(formats->findChild<QRadioButton *>(QStringLiteral("payloadFormat1")), &QRadioButton::toggled,
            this, [this] { setScriptsEnabled(false); });
    connect(formats->findChild<QRadioButton *>(QStringLiteral("payloadFormat2")), &QRadioButton::toggled,
            this, [this] { setScriptsEnabled(true); });
    begin();
}

void ServerEditDialog::setScriptsEnabled(bool enabled)
{
    fields().widget(QStringLiteral("reportJS"))->setEnabled(enabled);
    fields().widget(QStringLiteral("writeJS"))->setEnabled(enabled);
}

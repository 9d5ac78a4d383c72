#include "servers/servereditdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "servers/javascripthighlighter.h"
#include "servers/serverfields.h"

#include <QRadioButton>
#include <QTextEdit>

ServerEditDialog::ServerEditDialog(QStandardItem *item, Workspace *workspace)
    : ServerForm({staticMetaObject.className(),
                  QT_TRANSLATE_NOOP("ServerEditDialog", "The Server MQTT '%1' is saved successfully.")},
                 item, workspace)
{
    setWindowTitle(tr("Edit Server"));
    ServerFields::addIdentity(fields(), Protocols::mqtt);
    fields().add<TextField>(serverIpRole, tr("IP Address:"))->check(hostNameValidator);
    ServerFields::addPort(fields());
    ServerFields::addClientId(fields());
    ServerFields::addUserName(fields());
    // Compat: of the forms with a password, this one alone shows it as it is typed.
    ServerFields::addPassword(fields());
    ServerFields::addQos(fields(), "0 1 2");
    addPayload();
    setParts({&fields()});
}

void ServerEditDialog::addPayload()
{
    const auto *format = fields()
                             .add<NumberedField>(serverPayloadFormatRole, tr("Payload Format:"))
                             ->texts({tr("Tarnwick MQTT"), tr("Custom formatting")});
    fields().add<TextField>(serverReportTopicRole, tr("Report Topic:"))->check(noCjkValidator);
    addScript(serverReportJsRole, tr("Report JS:"), format);
    fields().add<TextField>(serverWriteTopicRole, tr("Write Topic:"))->check(noCjkValidator);
    addScript(serverWriteJsRole, tr("Write JS:"), format);
}

void ServerEditDialog::addScript(int role, const QString &label, const NumberedField *format)
{
    QTextEdit *edit = fields().add<ScriptField>(role, label)->edit();
    new JavaScriptHighlighter(edit->document());
    // The highlighter's colours are made for light ground, whatever the desktop's is.
    edit->setStyleSheet(QStringLiteral("QTextEdit:enabled { background-color: white; color: black; }"));
    // Either signal tells what its own button stands for, whatever it says: the button that loses the check
    // signals first, so that the last word is the checked one's. Opening checks one of the two.
    connect(format->button(1), &QRadioButton::toggled, edit, [edit] { edit->setEnabled(false); });
    connect(format->button(2), &QRadioButton::toggled, edit, [edit] { edit->setEnabled(true); });
}

#include "servers/serverhj212editdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"

#include <QLineEdit>
#include <QRegExpValidator>

namespace {

// By HJ 212: the code of an environment or of a kind of pollution source, in ascending order.
QVector<Choice> systemCodes()
{
    return {
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Surface water quality testing"), 21},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Air quality testing"), 22},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Acoustic environment quality testing"), 23},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Groundwater quality testing"), 24},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Soil quality testing"), 25},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Sea water quality testing"), 26},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Volatile organic compound detection"), 27},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Air pollution sources"), 31},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Surface water pollution sources"), 32},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Groundwater environmental pollution sources"), 33},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Marine environmental pollution sources"), 34},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Soil environmental pollution sources"), 35},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Sources of acoustic environmental pollution"), 36},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Vibration environmental pollution sources"), 37},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Radioactive environmental pollution source"), 38},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Construction site dust pollution source"), 39},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Electromagnetic environmental pollution sources"), 41},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Monitoring of flue gas emission process"), 51},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "Monitoring of sewage discharge process"), 52},
        {QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "system interaction"), 91},
    };
}

// Address and password go by QRegularExpression here, where the shared checks use the older engine: the two
// differ in characters beyond U+FFFF, which this one lets through in a password.
const char *const noCjkPattern = "^[^\\x{04BB}-\\x{FFFD}]*$";

} // namespace

ServerHJ212EditDialog::ServerHJ212EditDialog(QStandardItem *item, Workspace *workspace)
    : PointTableForm(
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("ServerHJ212EditDialog", "The Server HJ212 '%1' is saved successfully.")},
        {"ServerHJ212EditDialog: Delete", true}, item, workspace)
{
    setWindowTitle(tr("Edit Standard"));
    addConnection();
    addPoints({tr("PLC Name"), tr("Name"), tr("Factor Code")});
}

void ServerHJ212EditDialog::addConnection()
{
    FieldGroup &form = fields();
    form.add<TextField>(Qt::DisplayRole, "name", tr("Server Name:"))->readOnly();
    form.add<ListField>(serverProtocolRole, tr("Protocol:"))->entries({Protocols::hj212})->disabled();
    form.add<TextField>(serverIpRole, tr("IP Address:"))->pattern(ipv4Pattern);
    form.add<TextField>(serverPortRole, tr("Port:"))->check(portValidator);
    form.add<TextField>(serverClientIdRole, tr("Client ID:"))->pattern("[0-9A-F]{1,24}");
    form.add<TextField>(serverPasswordRole, tr("Password:"))->pattern(noCjkPattern)->password();
    form.add<CodedField>(serverSystemCodeRole, "systemCode", tr("System Code:"))->choices(systemCodes());
    form.add<TextField>(serverCommandCodeRole, tr("Command Code:"));
}

void ServerHJ212EditDialog::fillPoints(const QStandardItem *item)
{
    PointTableForm::fillPoints(item);
    log("loadParameters");
}

QWidget *ServerHJ212EditDialog::makeCodeCell(const QString &code, QWidget *parent)
{
    auto *edit = new QLineEdit(code, parent);
    edit->setFrame(false);
    edit->setValidator(new QRegExpValidator(QRegExp(QStringLiteral("[A-Za-z0-9]+")), edit));
    return edit;
}

QString ServerHJ212EditDialog::codeOf(const QWidget *cell) const
{
    const auto *edit = qobject_cast<const QLineEdit *>(cell);
    return edit ? edit->text() : QString();
}

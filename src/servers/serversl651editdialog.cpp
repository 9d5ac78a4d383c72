#include "servers/serversl651editdialog.h"

#include "definitions/sl651elements.h"
#include "model/itemroles.h"
#include "servers/serverfields.h"
#include "widgets/tell.h"

#include <QComboBox>
#include <QLineEdit>
#include <QStringListModel>

namespace {

// By SL 651: the ASCII code of the letter that stands for a kind of station.
QVector<Choice> stationTypes()
{
    return {
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "precipitation"), int('P')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "river course"), int('H')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Reservoir (Lake)"), int('K')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "gate dam"), int('Z')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "pump station"), int('D')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "tide"), int('T')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "soil moisture content"), int('M')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "groundwater"), int('G')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "water quality"), int('Q')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Water intake"), int('I')},
        {QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Drain"), int('O')},
    };
}

QVector<Field> connectionFields()
{
    return {
        {"name", QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Server Name:"), FieldKind::ReadOnly,
         Qt::DisplayRole},
        {"protocol",
         QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Protocol:"),
         FieldKind::List,
         serverProtocolRole,
         FieldCheck::None,
         {QStringLiteral("SL651")}},
        {"ip", QT_TRANSLATE_NOOP("ServerSL651EditDialog", "IP Address:"), FieldKind::Text, serverIpRole,
         FieldCheck::Ipv4},
        {"port", QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Port:"), FieldKind::Text, serverPortRole,
         FieldCheck::Port},
        ServerFields::patterned("centralStationAddress",
                                QT_TRANSLATE_NOOP("ServerSL651EditDialog", "centralStationAddress:"),
                                FieldKind::Text, serverCentralStationAddressRole, "[0-9A-Fa-f]{1,2}"),
        ServerFields::patterned("remoteStationAddress",
                                QT_TRANSLATE_NOOP("ServerSL651EditDialog", "remoteStationAddress:"),
                                FieldKind::Text, serverRemoteStationAddressRole, "[0-9A-Fa-f]+"),
        ServerFields::patterned("password", QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Password:"),
                                FieldKind::Password, serverPasswordRole, "^[0-9A-Fa-f]{4}$"),
        ServerFields::coded("remoteStationType",
                            QT_TRANSLATE_NOOP("ServerSL651EditDialog", "remoteStationType:"),
                            serverRemoteStationTypeRole, stationTypes()),
    };
}

// As they read in the language of this moment.
QStringList elementLabels()
{
    QStringList labels;
    for (const Sl651::Element &element : Sl651::elements()) {
        labels.append(ServerSL651EditDialog::tr(element.label));
    }
    return labels;
}

// The place of a stored code among the elements, or -1.
int elementOf(const QString &code)
{
    const auto &elements = Sl651::elements();
    for (int index = 0; index < elements.size(); ++index) {
        if (code == QLatin1String(elements.at(index).code)) {
            return index;
        }
    }
    return -1;
}

} // namespace

ServerSL651EditDialog::ServerSL651EditDialog(QStandardItem *item, Workspace *workspace)
    : PointTableForm(
        // Compat: the activity log gets the other form's line for a deleted point.
        {"ServerSL651EditDialog", QT_TRANSLATE_NOOP("ServerSL651EditDialog", "Edit Standard"),
         QT_TRANSLATE_NOOP("ServerSL651EditDialog", "The Server SL651 '%1' is saved successfully.")},
        {"ServerHJ212EditDialog: Delete", false}, connectionFields(),
        {tr("PLC Name"), tr("Name"), tr("Code")}, item, workspace)
{
    connect(fields().lineEdit(QStringLiteral("centralStationAddress")), &QLineEdit::editingFinished, this,
            &ServerSL651EditDialog::validateCentralStationAddress);
    begin();
}

void ServerSL651EditDialog::validateCentralStationAddress()
{
    QLineEdit *edit = fields().lineEdit(QStringLiteral("centralStationAddress"));
    bool ok = false;
    const int address = edit->text().toInt(&ok, 16);
    if (!ok || address < 1 || address > 255) {
        edit->clear();
        Tell::warning(this, tr("Input Error"), tr("Please enter a valid address between 1 and 255."));
    }
}

QWidget *ServerSL651EditDialog::makeCodeCell(const QString &code, QWidget *parent)
{
    auto *list = new QComboBox(parent);
    // The cell gives the width: measuring every label for every row takes a second for a thousand points.
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    // Of this row alone, since entries may be added to a list.
    list->setModel(new QStringListModel(elementLabels(), list));
    const int element = elementOf(code);
    if (element >= 0) {
        list->setCurrentIndex(element);
    } else {
        list->setCurrentText(code); // which normally is no label either, so that the first stands
    }
    list->setToolTip(list->currentText()); // often longer than its column
    connect(list, &QComboBox::currentTextChanged, list, &QWidget::setToolTip);
    list->installEventFilter(this);
    // Else the table's menu would come up over a row that this click did not select.
    list->setContextMenuPolicy(Qt::PreventContextMenu);
    return list;
}

QString ServerSL651EditDialog::codeOf(const QWidget *cell) const
{
    const auto *list = qobject_cast<const QComboBox *>(cell);
    const QString text = list ? list->currentText() : QString();
    for (const Sl651::Element &element : Sl651::elements()) {
        if (text == tr(element.label)) {
            return QLatin1String(element.code);
        }
    }
    return text; // no label in the present language
}

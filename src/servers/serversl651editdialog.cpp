#include "servers/serversl651editdialog.h"

#include "definitions/protocols.h"
#include "definitions/sl651elements.h"
#include "model/itemroles.h"
#include "widgets/combobox.h"
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
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("ServerSL651EditDialog", "The Server SL651 '%1' is saved successfully.")},
        // Compat: the activity log gets the other form's line for a deleted point.
        {"ServerHJ212EditDialog: Delete", false}, item, workspace)
{
    setWindowTitle(tr("Edit Standard"));
    addConnection();
    addPoints({tr("PLC Name"), tr("Name"), tr("Code")});
    connect(m_centralStation->edit(), &QLineEdit::editingFinished, this,
            &ServerSL651EditDialog::validateCentralStationAddress);
}

void ServerSL651EditDialog::addConnection()
{
    FieldGroup &form = fields();
    form.add<TextField>(Qt::DisplayRole, "name", tr("Server Name:"))->readOnly();
    form.add<ListField>(serverProtocolRole, tr("Protocol:"))->entries({Protocols::sl651})->disabled();
    form.add<TextField>(serverIpRole, tr("IP Address:"))->check(ipv4Validator);
    form.add<TextField>(serverPortRole, tr("Port:"))->check(portValidator);
    m_centralStation = form.add<TextField>(serverCentralStationAddressRole, tr("centralStationAddress:"))
                           ->pattern("[0-9A-Fa-f]{1,2}");
    form.add<TextField>(serverRemoteStationAddressRole, tr("remoteStationAddress:"))->pattern("[0-9A-Fa-f]+");
    form.add<TextField>(serverPasswordRole, tr("Password:"))->pattern("^[0-9A-Fa-f]{4}$")->password();
    form.add<CodedField>(serverRemoteStationTypeRole, tr("remoteStationType:"))->choices(stationTypes());
}

void ServerSL651EditDialog::validateCentralStationAddress()
{
    QLineEdit *edit = m_centralStation->edit();
    bool ok = false;
    const int address = edit->text().toInt(&ok, 16);
    if (!ok || address < 1 || address > 255) {
        edit->clear();
        Tell::warning(this, tr("Input Error"), tr("Please enter a valid address between 1 and 255."));
    }
}

QWidget *ServerSL651EditDialog::makeCodeCell(const QString &code, QWidget *parent)
{
    auto *list = new ComboBox(parent);
    // The cell gives the width: measuring every label for every row takes a second for a thousand points.
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    // Of this row alone, since entries may be added to a list.
    list->setModel(new QStringListModel(elementLabels(), list));
    const int element = elementOf(code);
    if (element >= 0) {
        list->setCurrentIndex(element);
    } else {
        list->setCurrentText(code); // which normally is no label either, so that the first is shown
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

#include "plc/plceditdialog.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"
#include "parametertable/parametertable.h"
#include "plc/plcfields.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>

#include <algorithm>

namespace {

constexpr char context[] = "PLCEditDialog";
constexpr int parameterListHeight = 600; // pixels

// A save walks these before the period, and the other groups behind it in the form's order.
const PlcGroup savedBeforePeriod[] = {PlcGroup::Network, PlcGroup::S7Model, PlcGroup::Serial,
                                      PlcGroup::Ppi,     PlcGroup::S7Rack,  PlcGroup::S7Tsap};

// These two go by the model.
bool isOfModel(PlcGroup group)
{
    return group == PlcGroup::S7Rack || group == PlcGroup::S7Tsap;
}

} // namespace

PLCEditDialog::PLCEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : ParameterForm(ParameterVariant::plc(), workspace, parent)
    , m_item(item)
    , m_attributes(context, PlcFields::attributes())
    , m_trigger(context, PlcFields::trigger())
    , m_omronModel(context, PlcFields::omronModel())
{
    setWindowTitle(tr("Edit PLC"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(FormPage::scrollArea(buildContent(), this));
    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("Save"), tr("Cancel"));
    connect(buttons.save, &QPushButton::clicked, this, &PLCEditDialog::saveChanges);
    connect(buttons.cancel, &QPushButton::clicked, this, &PLCEditDialog::rejected);

    fillAttributes();
    for (const Group &each : m_groups) {
        each.fields.fill(m_item.item());
    }
    m_trigger.fill(m_item.item());
    m_omronModel.fill(m_item.item());
    loadStoredParameters();
    connect(m_attributes.comboBox(QStringLiteral("protocol")), &QComboBox::currentTextChanged, this,
            &PLCEditDialog::onProtocolChanged);
    onProtocolChanged(m_attributes.text(QStringLiteral("protocol")));
    logToFile(QStringLiteral("PLCEditDialog: new-nuilt"));
}

PLCEditDialog::~PLCEditDialog()
{
    logToFile(QStringLiteral("PLCEditDialog: destroyed"));
}

QWidget *PLCEditDialog::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    m_attributes.build(new QFormLayout(addBox(column, "attributes", tr("PLC Attribute"))));
    const auto groups = PlcFields::groups();
    for (const PlcFields::Group &each : groups) {
        QGroupBox *box = addBox(column, each.name, each.title ? tr(each.title) : QString());
        m_groups.push_back({each.id, box, FieldTable(context, each.fields)});
        m_groups.back().fields.build(new QFormLayout(box));
    }
    group(PlcGroup::Modbus).fields.widget(QStringLiteral("series"))->setEnabled(false);
    m_omronModel.buildUnseen(content);

    QGroupBox *parameters = addBox(column, "parameters", tr("Parameter List"));
    parameters->setFixedHeight(parameterListHeight);
    auto *form = new QFormLayout(parameters);
    addTrigger(form);
    form->addRow(makeTableButtons(parameters));
    m_table = makeTable(parameters);
    form->addRow(m_table);
    column->addStretch();
    alignFields();
    return content;
}

QGroupBox *PLCEditDialog::addBox(QVBoxLayout *column, const char *name, const QString &title)
{
    auto *box = new QGroupBox(title, column->parentWidget());
    box->setObjectName(QLatin1String(name));
    column->addWidget(box);
    return box;
}

void PLCEditDialog::addTrigger(QFormLayout *form)
{
    m_trigger.build(form);
    // Its one entry is not stored.
    auto *trigger = new QComboBox(form->parentWidget());
    trigger->setObjectName(QStringLiteral("trigger"));
    trigger->addItem(tr("Timed Loops"));
    FormPage::putBeforeField(form, 0, trigger);
}

void PLCEditDialog::alignFields()
{
    QVector<const FieldTable *> tables{&m_attributes, &m_trigger};
    for (const Group &each : m_groups) {
        tables.append(&each.fields);
    }
    FieldTable::align(tables);
}

void PLCEditDialog::fillAttributes()
{
    QStandardItem *item = m_item.item();
    // Before the list of protocols changes: which groups show goes by the manufacturer, too.
    m_attributes.setText(QStringLiteral("manufacturer"), item->data(plcManufacturerRole).toString());
    QComboBox *protocols = m_attributes.comboBox(QStringLiteral("protocol"));
    protocols->clear();
    protocols->addItems(PlcCatalogue::protocols(item->data(plcManufacturerRole).toString()));
    m_attributes.fill(item);
    updateProtocolOptions(protocols->currentText());
}

void PLCEditDialog::loadStoredParameters()
{
    loadParameters(m_item.item()->data(plcParametersRole).value<RowList>());
}

void PLCEditDialog::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    fillAttributes();
    for (const Group &each : m_groups) {
        if (each.id == PlcGroup::Serial) {
            // An unknown text leaves a list at the entry of the PLC before, on purpose.
            each.fields.fill(item, FieldTable::Unknown::Keep);
            each.fields.resetEmptyLists(item);
        } else if (each.id == PlcGroup::Network || each.box->isVisible()) {
            each.fields.fill(item);
        }
    }
    m_trigger.fill(item);
    loadStoredParameters();
    logToFile(QStringLiteral("PLCEditDialog: replace"));
}

void PLCEditDialog::saveChanges()
{
    QStandardItem *item = m_item.item();
    if (!item) {
        return; // its node has left the tree: there is nothing to write into
    }
    m_attributes.save(item);
    for (PlcGroup id : savedBeforePeriod) {
        saveGroup(group(id), item);
    }
    m_trigger.save(item);
    for (const Group &each : m_groups) {
        if (each.id > PlcGroup::Ppi) {
            saveGroup(each, item);
        }
    }
    ProjectTree::registerTypes();
    item->setData(QVariant::fromValue(m_table->rows()), plcParametersRole);
    if (workspace()) {
        workspace()->appendMessage(
            tr("The PLC '%1' is saved successfully.").arg(m_attributes.text(QStringLiteral("name"))));
    }
    logToFile(QStringLiteral("PLCEditDialog: save"));
}

void PLCEditDialog::saveGroup(const Group &group, QStandardItem *item) const
{
    // What is hidden is erased.
    if (group.box->isVisible()) {
        group.fields.save(item);
    } else {
        group.fields.erase(item);
    }
}

void PLCEditDialog::clearData()
{
    m_attributes.clear();
    for (const Group &each : m_groups) {
        each.fields.clear();
    }
    m_trigger.clear();
    m_omronModel.clear();
    m_table->setRowCount(0);
}

void PLCEditDialog::onProtocolChanged(QString protocol)
{
    for (const Group &each : m_groups) {
        if (!isOfModel(each.id)) {
            each.box->hide();
        }
    }
    const QString manufacturer = m_attributes.text(QStringLiteral("manufacturer"));
    if (const PlcCatalogue::Entry *entry = PlcCatalogue::find(manufacturer, protocol)) {
        group(entry->link).box->show();
        group(entry->group).box->show();
    }
    adjustSize();

    QComboBox *models = group(PlcGroup::S7Model).fields.comboBox(QStringLiteral("model"));
    models->clear();
    models->addItems(PlcCatalogue::models(protocol));
    const QStandardItem *item = m_item.item();
    const int stored = item ? models->findText(item->data(plcModelRole).toString()) : -1;
    if (stored >= 0) {
        models->setCurrentIndex(stored);
    }
    connect(models, &QComboBox::currentTextChanged, this, &PLCEditDialog::onmodelChanged,
            Qt::UniqueConnection);
    onmodelChanged(models->currentText());
}

void PLCEditDialog::onmodelChanged(QString model)
{
    const bool isS7 = m_attributes.text(QStringLiteral("protocol")) == QLatin1String("S7");
    const PlcGroup shown = isS7 ? PlcCatalogue::groupOfModel(model) : PlcGroup::None;
    group(PlcGroup::S7Rack).box->setVisible(shown == PlcGroup::S7Rack);
    group(PlcGroup::S7Tsap).box->setVisible(shown == PlcGroup::S7Tsap);
}

void PLCEditDialog::updateProtocolOptions(QString protocol)
{
    QStandardItem *item = m_item.item();
    if (item && item->data(plcPortRole).toString().isEmpty()) {
        item->setData(PlcCatalogue::defaultPort(protocol), plcPortRole);
    }
}

const PLCEditDialog::Group &PLCEditDialog::group(PlcGroup id) const
{
    const auto found =
        std::find_if(m_groups.begin(), m_groups.end(), [id](const Group &each) { return each.id == id; });
    Q_ASSERT(found != m_groups.end());
    return *found;
}

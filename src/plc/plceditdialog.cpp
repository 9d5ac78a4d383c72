#include "plc/plceditdialog.h"

#include "forms/formpage.h"
#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "plc/plcfields.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QStandardItem>

namespace {

constexpr int parameterListHeight = 600; // pixels

// A save walks these before the period, and the other groups behind it in the form's order.
const PlcGroup savedBeforePeriod[] = {PlcGroup::Network, PlcGroup::S7Model, PlcGroup::Serial,
                                      PlcGroup::Ppi,     PlcGroup::S7Rack,  PlcGroup::S7Tsap};

// These two go by the model.
bool isOfModel(PlcGroup group)
{
    return group == PlcGroup::S7Rack || group == PlcGroup::S7Tsap;
}

bool isOfLink(PlcGroup group)
{
    return group == PlcGroup::Network || group == PlcGroup::Serial;
}

QFormLayout *addFrame(QBoxLayout *column, const char *name, const QString &title)
{
    auto *frame = new QGroupBox(title, column->parentWidget());
    frame->setObjectName(QLatin1String(name));
    column->addWidget(frame);
    return new QFormLayout(frame);
}

} // namespace

PLCEditDialog::PLCEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : ParameterForm({staticMetaObject.className(),
                     QT_TRANSLATE_NOOP("PLCEditDialog", "The PLC '%1' is saved successfully.")},
                    ParameterVariant::plc(), item, workspace, parent)
    , m_attributes(staticMetaObject.className(), Definitions::Kind::Plc)
    , m_trigger(staticMetaObject.className(), Definitions::Kind::Plc)
    , m_omronModel(staticMetaObject.className(), Definitions::Kind::Plc)
    , m_attributePart([this](QStandardItem *shown) { fillAttributes(shown); },
                      [this](QStandardItem *saved) { m_attributes.save(saved); },
                      [this] { m_attributes.clear(); })
    // Compat: only the default of a new PLC; another PLC and a save leave the role alone, for the document.
    , m_omronPart([this](QStandardItem *shown) { m_omronModel.fill(shown); }, {},
                  [this] { m_omronModel.clear(); }, [](QStandardItem *) {})
    , m_stored(
          [this](QStandardItem *shown) { loadParameters(shown->data(plcParametersRole).value<RowList>()); },
          [this](QStandardItem *saved) {
              saved->setData(QVariant::fromValue(m_table->rows()), plcParametersRole);
          },
          [this] { m_table->setRowCount(0); })
{
    setWindowTitle(tr("Edit PLC"));
    QWidget *content = buildContent();
    setContent(content, parts());
    connect(saveButton(), &QPushButton::clicked, this, &PLCEditDialog::saveChanges);
    connect(m_protocol->list(), &QComboBox::currentTextChanged, this, &PLCEditDialog::onProtocolChanged);
    onProtocolChanged(m_protocol->text());
}

QWidget *PLCEditDialog::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    addAttributes(column);
    for (const PlcFields::Group &each : PlcFields::groups()) {
        const auto refill = isOfLink(each.id) ? FieldFrame::Refill::Always : FieldFrame::Refill::WhenVisible;
        FieldFrame &frame =
            m_groups.try_emplace(each.id, staticMetaObject.className(), Definitions::Kind::Plc, refill)
                .first->second;
        frame.build(column, each.title ? tr(each.title) : QString())->setObjectName(QLatin1String(each.name));
        if (each.id == PlcGroup::S7Model) {
            m_model = PlcFields::addModels(frame);
        } else {
            each.addRows(frame);
        }
    }
    m_omronModel.setPage(content);
    PlcFields::addOmronModel(m_omronModel);
    addParameterList(column);
    column->addStretch();

    QVector<FieldGroup *> aligned{&m_attributes, &m_trigger};
    for (auto &each : m_groups) {
        aligned.append(&each.second);
    }
    FieldGroup::align(aligned);
    return content;
}

void PLCEditDialog::addAttributes(QVBoxLayout *column)
{
    m_attributes.setLayout(addFrame(column, "attributes", tr("PLC Attribute")));
    m_attributes.add<TextField>(Qt::DisplayRole, "name", tr("PLC Name:"))->readOnly();
    m_manufacturer = m_attributes.add<TextField>(plcManufacturerRole, tr("Manufacturer:"))->readOnly();
    m_protocol = m_attributes.add<ListField>(plcProtocolRole, tr("Protocol:"));
}

void PLCEditDialog::addParameterList(QVBoxLayout *column)
{
    QFormLayout *form = addFrame(column, "parameters", tr("Parameter List"));
    QWidget *frame = form->parentWidget();
    frame->setFixedHeight(parameterListHeight);
    m_trigger.setLayout(form);
    m_trigger
        .add<TextField>(plcCollectionIntervalRole, QT_TRANSLATE_NOOP("PLCEditDialog", "Trigger Conditions:"))
        ->milliseconds();
    FormPage::addTrigger(form, tr("Timed Loops"));
    form->addRow(makeTableButtons(frame));
    m_table = makeTable(frame);
    form->addRow(m_table);
}

QVector<FormPart *> PLCEditDialog::parts()
{
    QVector<FormPart *> parts{&m_attributePart};
    for (PlcGroup id : savedBeforePeriod) {
        parts.append(&group(id));
    }
    parts.append(&m_trigger);
    for (auto &[id, frame] : m_groups) {
        if (id > PlcGroup::Ppi) {
            parts.append(&frame);
        }
    }
    return parts << &m_omronPart << &m_stored;
}

void PLCEditDialog::fillAttributes(QStandardItem *item)
{
    const QString manufacturer = item->data(plcManufacturerRole).toString();
    // Before the list of protocols changes: which groups show goes by the manufacturer, too.
    m_manufacturer->setText(manufacturer);
    m_protocol->list()->clear();
    m_protocol->entries(PlcCatalogue::protocols(manufacturer));
    m_attributes.fill(item);
    updateProtocolOptions(m_protocol->text());
}

void PLCEditDialog::onProtocolChanged(QString protocol)
{
    for (const auto &[id, frame] : m_groups) {
        if (!isOfModel(id)) {
            frame.frame()->hide();
        }
    }
    if (const PlcCatalogue::Entry *entry = PlcCatalogue::find(m_manufacturer->text(), protocol)) {
        group(entry->link).frame()->show();
        group(entry->group).frame()->show();
    }
    adjustSize();

    QComboBox *models = m_model->list();
    models->clear();
    m_model->entries(PlcCatalogue::models(protocol));
    if (const QStandardItem *shown = item()) {
        m_model->setText(shown->data(plcModelRole).toString());
    }
    connect(models, &QComboBox::currentTextChanged, this, &PLCEditDialog::onmodelChanged,
            Qt::UniqueConnection);
    onmodelChanged(models->currentText());
}

void PLCEditDialog::onmodelChanged(QString model)
{
    const bool isS7 = m_protocol->text() == PlcCatalogue::s7;
    const PlcGroup shown = isS7 ? PlcCatalogue::groupOfModel(model) : PlcGroup::None;
    group(PlcGroup::S7Rack).frame()->setVisible(shown == PlcGroup::S7Rack);
    group(PlcGroup::S7Tsap).frame()->setVisible(shown == PlcGroup::S7Tsap);
}

void PLCEditDialog::updateProtocolOptions(QString protocol)
{
    QStandardItem *shown = item();
    if (shown && shown->data(plcPortRole).toString().isEmpty()) {
        shown->setData(PlcCatalogue::defaultPort(protocol), plcPortRole);
    }
}

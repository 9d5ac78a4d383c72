#include "standards/standardmodbuseditdialog.h"

#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "standards/modbusfields.h"
#include "standards/modbuspage.h"
#include "standards/standardfields.h"
#include "standards/standardtabs.h"
#include "widgets/progress.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QStandardItem>
#include <QTimer>

standardModbusEditDialog::standardModbusEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : ParameterForm(
        {staticMetaObject.className(),
         QT_TRANSLATE_NOOP("standardModbusEditDialog", "The Standard Modbus '%1' is saved successfully.")},
        ParameterVariant::modbus(), item, workspace, parent)
    , m_identity(staticMetaObject.className(), Definitions::Kind::Standard)
    , m_network(staticMetaObject.className(), Definitions::Kind::Standard)
    , m_serial(staticMetaObject.className(), Definitions::Kind::Standard)
    , m_trigger(staticMetaObject.className(), Definitions::Kind::Standard)
    , m_stored(
          [this](QStandardItem *) {
              QTimer::singleShot(0, this, [this] {
                  if (!m_tabsLoaded) {
                      loadTabs();
                  }
              });
          },
          [this](QStandardItem *saved) {
              saved->setData(QVariant::fromValue(m_tabs->groups()), standardDatasRole);
          },
          [this] { m_tabs->deletePages(); },
          [this](QStandardItem *) {
              m_tabs->deletePages();
              loadTabs();
          })
{
    setWindowTitle(tr("Edit Standard"));
    setContent(buildContent(), {&m_identity, &m_network, &m_serial, &m_trigger, &m_stored});
    connect(m_link->list(), &QComboBox::currentTextChanged, this,
            &standardModbusEditDialog::onProtocolChanged);
    onProtocolChanged(m_link->text());
}

QLineEdit *standardModbusEditDialog::nameEdit() const
{
    return m_name->edit();
}

QWidget *standardModbusEditDialog::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    const QWidget *identity = buildIdentity(column);
    m_network.build(column, tr("Network Layer Information"));
    ModbusFields::addNetwork(m_network);
    m_serial.build(column, tr("Serial Port Information"));
    ModbusFields::addSerial(m_serial);

    QPushButton *add = StandardTabs::makeAddButton(tr("Add Tab"), content);
    connect(add, &QPushButton::clicked, this, &standardModbusEditDialog::addTab);
    column->addWidget(add, 0, Qt::AlignLeft);
    column->addWidget(StandardFields::makeTriggerRow(m_trigger, content));

    const QString title = QStringLiteral("Modbus-%1");
    m_tabs = new StandardTabs(
        title, title, [this] { return makePage(); }, content);
    connect(m_tabs, &StandardTabs::tabCloseRequested, this, &standardModbusEditDialog::deleteTab);
    connect(m_tabs, &StandardTabs::duplicateRequested, this, &standardModbusEditDialog::duplicateTab);
    column->addWidget(m_tabs);
    alignFields(identity);
    return content;
}

QWidget *standardModbusEditDialog::buildIdentity(QVBoxLayout *column)
{
    auto *frame = new QGroupBox(column->parentWidget());
    frame->setStyleSheet(QStringLiteral("QGroupBox { border: none; }"));
    column->addWidget(frame);
    m_identity.setLayout(new QFormLayout(frame));
    m_name = m_identity.add<TextField>(Qt::DisplayRole, "name", tr("Server Name:"));
    m_identity.add<ListField>(standardProtocolRole, tr("Protocol:"))->entries({Protocols::modbus});
    m_link = m_identity.add<ListField>(standardModbusModeRole, tr("Modbus:"));
    return frame;
}

void standardModbusEditDialog::alignFields(const QWidget *identity)
{
    int widest = 0;
    for (const FieldGroup *fields :
         std::initializer_list<const FieldGroup *>{&m_identity, &m_network, &m_serial, &m_trigger}) {
        widest = qMax(widest, fields->labelWidth());
    }
    const auto inset = [](const QWidget *frame) {
        return frame->contentsMargins().left() + frame->layout()->contentsMargins().left();
    };
    // The fields in the two frames begin furthest in; the labels of the others make up for it.
    m_fieldColumn = widest + inset(m_network.frame());
    m_identity.setLabelWidth(m_fieldColumn - inset(identity));
    m_network.setLabelWidth(widest);
    m_serial.setLabelWidth(widest);
    m_trigger.setLabelWidth(m_fieldColumn);
}

ModbusPage *standardModbusEditDialog::makePage()
{
    auto *page = new ModbusPage(m_fieldColumn, m_tabs);
    QWidget *buttons = makeTableButtons(page); // first, as the Tab key goes
    m_latestTable = makeTable(page);
    page->addTable(buttons, m_latestTable);
    return page;
}

void standardModbusEditDialog::loadTabs()
{
    m_tabsLoaded = true;
    if (const QStandardItem *shown = item()) {
        const QVariant stored = shown->data(standardDatasRole);
        Progress progress(m_tabs, ParameterVariant::modbus().loadingText(), StandardTabs::rowsIn(stored));
        m_tabs->load(stored, [this](const QString &title, const RowList &rows) { loadTab(title, rows); });
    }
}

void standardModbusEditDialog::addTab()
{
    m_tabs->addPage();
}

void standardModbusEditDialog::loadTab(QString title, QList<QVariantList> rows)
{
    m_tabs->pageTitled(title)->setRows(rows);
}

void standardModbusEditDialog::deleteTab(int index)
{
    const auto *page = qobject_cast<ModbusPage *>(m_tabs->widget(index));
    if (endEditing(page ? page->table() : nullptr)) {
        m_tabs->deletePage(index);
    }
}

void standardModbusEditDialog::duplicateTab(int index)
{
    // A click on a tab leaves the cell in use its focus, also one of another tab.
    if (endEditing(currentTable())) {
        m_tabs->duplicatePage(index);
    }
}

void standardModbusEditDialog::onProtocolChanged(QString protocol)
{
    m_network.frame()->setVisible(protocol == Protocols::modbusTcp);
    m_serial.frame()->setVisible(protocol == Protocols::modbusRtu);
}

ParameterTable *standardModbusEditDialog::currentTable() const
{
    const auto *page = qobject_cast<ModbusPage *>(m_tabs->currentWidget());
    return page ? page->table() : nullptr;
}

ParameterTable *standardModbusEditDialog::latestTable() const
{
    return m_latestTable;
}

QString standardModbusEditDialog::exportName() const
{
    return ParameterForm::exportName() + QLatin1Char(' ') + m_tabs->tabText(m_tabs->currentIndex());
}

QString standardModbusEditDialog::missingTableText() const
{
    return m_tabs->currentWidget() ? tr("Parameter table not found.") : tr("No tab selected.");
}

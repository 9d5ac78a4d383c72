#include "standards/standardmodbuseditdialog.h"

#include "definitions/protocols.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"
#include "parametertable/parametertable.h"
#include "standards/modbusfields.h"
#include "standards/modbuspage.h"
#include "standards/standardfields.h"
#include "standards/standardtabs.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>
#include <QTimer>

standardModbusEditDialog::standardModbusEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent)
    : ParameterForm(ParameterVariant::modbus(), workspace, parent)
    , m_item(item)
    , m_identity(ModbusFields::context, ModbusFields::identity())
    , m_network(ModbusFields::context, ModbusFields::network())
    , m_serial(ModbusFields::context, ModbusFields::serial())
    , m_trigger(ModbusFields::context, StandardFields::trigger())
{
    setWindowTitle(tr("Edit Standard"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(FormPage::scrollArea(buildContent(), this));
    const FormPage::Buttons buttons = FormPage::appendButtons(layout, tr("Save"), tr("Cancel"));
    m_save = buttons.save;
    connect(buttons.cancel, &QPushButton::clicked, this, &standardModbusEditDialog::rejected);

    fillFields();
    connect(m_identity.comboBox(QStringLiteral("modbus")), &QComboBox::currentTextChanged, this,
            &standardModbusEditDialog::onProtocolChanged);
    onProtocolChanged(m_identity.text(QStringLiteral("modbus")));
    QTimer::singleShot(0, this, [this] {
        if (!m_tabsLoaded) {
            loadTabs();
        }
    });
    logToFile(QStringLiteral("standardModbusEditDialog: new-nuilt"));
}

standardModbusEditDialog::~standardModbusEditDialog()
{
    logToFile(QStringLiteral("standardModbusEditDialog: destroyed"));
}

QWidget *standardModbusEditDialog::buildContent()
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    const auto group = [content, column](const QString &title, FieldTable &fields) {
        auto *box = new QGroupBox(title, content);
        fields.build(new QFormLayout(box));
        column->addWidget(box);
        return box;
    };
    group(QString(), m_identity)->setStyleSheet(QStringLiteral("QGroupBox { border: none; }"));
    m_networkGroup = group(tr("Network Layer Information"), m_network);
    m_serialGroup = group(tr("Serial Port Information"), m_serial);

    QPushButton *add = StandardTabs::makeAddButton(tr("Add Tab"), content);
    connect(add, &QPushButton::clicked, this, &standardModbusEditDialog::addTab);
    column->addWidget(add, 0, Qt::AlignLeft);
    column->addWidget(StandardFields::triggerRow(m_trigger, content));

    const QString title = QStringLiteral("Modbus-%1");
    m_tabs = new StandardTabs(title, title, content);
    connect(m_tabs, &StandardTabs::tabCloseRequested, this, &standardModbusEditDialog::deleteTab);
    column->addWidget(m_tabs);
    alignFields();
    return content;
}

void standardModbusEditDialog::alignFields()
{
    int widest = 0;
    for (const FieldTable *fields : {&m_identity, &m_network, &m_serial, &m_trigger}) {
        widest = qMax(widest, fields->labelWidth());
    }
    const QWidget *identity = m_identity.label(QStringLiteral("name"))->parentWidget();
    const auto inset = [](const QWidget *box) {
        return box->contentsMargins().left() + box->layout()->contentsMargins().left();
    };
    // The frames of the two groups stand furthest in; the labels of the others make up for it.
    m_fieldColumn = widest + inset(m_networkGroup);
    m_identity.setLabelWidth(m_fieldColumn - inset(identity));
    m_network.setLabelWidth(widest);
    m_serial.setLabelWidth(widest);
    m_trigger.setLabelWidth(m_fieldColumn);
}

ModbusPage *standardModbusEditDialog::makePage(const QString &title)
{
    auto *page = new ModbusPage(m_fieldColumn, m_tabs);
    QWidget *buttons = makeTableButtons(page); // first, as the Tab key goes
    m_latestTable = makeTable(page);
    page->addTable(buttons, m_latestTable);
    m_tabs->appendPage(page, title);
    return page;
}

void standardModbusEditDialog::fillFields()
{
    for (const FieldTable *fields : {&m_identity, &m_network, &m_serial, &m_trigger}) {
        fields->fill(m_item.item());
    }
}

void standardModbusEditDialog::loadTabs()
{
    m_tabsLoaded = true;
    if (const QStandardItem *item = m_item.item()) {
        m_tabs->load(item->data(standardDatasRole),
                     [this](const QString &title, const RowList &rows) { loadTab(title, rows); });
    }
}

void standardModbusEditDialog::replaceItem(QStandardItem *item)
{
    m_item = ItemRef(item);
    fillFields();
    m_tabs->deletePages();
    loadTabs();
    logToFile(QStringLiteral("standardModbusEditDialog: replace"));
}

void standardModbusEditDialog::addTab()
{
    makePage(m_tabs->takeTitle());
}

void standardModbusEditDialog::loadTab(QString title, QList<QVariantList> rows)
{
    StandardPage *page = m_tabs->pageTitled(title);
    if (!page) {
        page = makePage(title);
    }
    page->setRows(rows);
}

void standardModbusEditDialog::deleteTab(int index)
{
    m_tabs->deletePage(index);
}

void standardModbusEditDialog::saveChanges()
{
    QStandardItem *item = m_item.item();
    if (!item) {
        return; // its node has left the tree: there is nothing to write into
    }
    m_identity.save(item);
    const struct {
        const QGroupBox *box;
        const FieldTable *fields;
    } groups[] = {{m_networkGroup, &m_network}, {m_serialGroup, &m_serial}};
    for (const auto &group : groups) {
        // What is hidden is erased.
        if (group.box->isVisible()) {
            group.fields->save(item);
        } else {
            group.fields->erase(item);
        }
    }
    m_trigger.save(item);

    item->setData(QVariant::fromValue(m_tabs->groups()), standardDatasRole);
    if (workspace()) {
        workspace()->appendMessage(tr("The Standard Modbus '%1' is saved successfully.")
                                       .arg(m_identity.text(QStringLiteral("name"))));
    }
    logToFile(QStringLiteral("standardModbusEditDialog: save"));
}

void standardModbusEditDialog::clearData()
{
    for (const FieldTable *fields : {&m_identity, &m_network, &m_serial, &m_trigger}) {
        fields->clear();
    }
    m_tabs->deletePages();
}

void standardModbusEditDialog::onProtocolChanged(QString protocol)
{
    m_networkGroup->setVisible(protocol == Protocols::modbusTcp);
    m_serialGroup->setVisible(protocol == Protocols::modbusRtu);
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

QString standardModbusEditDialog::missingTableText() const
{
    return m_tabs->currentWidget() ? tr("Parameter table not found.") : tr("No tab selected.");
}

QLineEdit *standardModbusEditDialog::nameEdit() const
{
    return m_identity.lineEdit(QStringLiteral("name"));
}

#include "standards/standardmodbuseditdialog.h"

#include "definitions/protocols.h"
#include "forms/formpage.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/workspace.h"
#include "parametertable/parametertable.h"
#include "standards/modbusfields.h"
#include "standards/standardfields.h"
#include "standards/standardtabs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItem>
#include <QTimer>

namespace {

template <class Widget> Widget *child(const QWidget *page, const char *name)
{
    return page ? page->findChild<Widget *>(QLatin1String(name)) : nullptr;
}

} // namespace

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

QWidget *standardModbusEditDialog::makePage(const QString &title)
{
    auto *page = new QWidget(m_tabs);
    auto *column = new QVBoxLayout(page);
    auto *form = new QFormLayout;
    column->addLayout(form);
    FieldTable slave(ModbusFields::context, ModbusFields::slave());
    slave.build(form);
    slave.setLabelWidth(m_fieldColumn - column->contentsMargins().left());
    slave.widget(QStringLiteral("seriesComboBox"))->setEnabled(false);
    slave.setText(QStringLiteral("stationNumEdit"), QStringLiteral("1"));
    child<QCheckBox>(page, "startAddress0CheckBox")->setChecked(true);

    column->addWidget(makeTableButtons(page));
    m_latestTable = makeTable(page);
    column->addWidget(m_latestTable);
    column->addStretch();
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
    QWidget *page = m_tabs->pageTitled(title);
    if (!page) {
        page = makePage(title);
    }
    if (rows.isEmpty()) {
        return;
    }
    const QVariantList settings = rows.takeFirst();
    child<QComboBox>(page, "seriesComboBox")->setCurrentText(settings.value(0).toString());
    child<QLineEdit>(page, "stationNumEdit")->setText(settings.value(1).toString());
    child<QComboBox>(page, "byteOrderComboBox")->setCurrentText(settings.value(2).toString());
    child<QCheckBox>(page, "startAddress0CheckBox")->setChecked(ProjectTree::isTrue(settings.value(3)));
    child<QCheckBox>(page, "charReversedCheckBox")->setChecked(ProjectTree::isTrue(settings.value(4)));
    page->findChild<ParameterTable *>()->fill(rows);
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

    const GroupMap tabs = m_tabs->groups([this](const QWidget *page) { return rowsOf(page); });
    item->setData(QVariant::fromValue(tabs), standardDatasRole);
    if (workspace()) {
        workspace()->appendMessage(tr("The Standard Modbus '%1' is saved successfully.")
                                       .arg(m_identity.text(QStringLiteral("name"))));
    }
    logToFile(QStringLiteral("standardModbusEditDialog: save"));
}

RowList standardModbusEditDialog::rowsOf(const QWidget *page) const
{
    const auto *series = child<QComboBox>(page, "seriesComboBox");
    const auto *station = child<QLineEdit>(page, "stationNumEdit");
    const auto *byteOrder = child<QComboBox>(page, "byteOrderComboBox");
    const auto *startAddress0 = child<QCheckBox>(page, "startAddress0CheckBox");
    const auto *charReversed = child<QCheckBox>(page, "charReversedCheckBox");
    const auto *table = page->findChild<ParameterTable *>();
    if (!series || !station || !byteOrder || !startAddress0 || !charReversed || !table) {
        return {};
    }
    return RowList{{series->currentText(), station->text(), byteOrder->currentText(),
                    startAddress0->isChecked(), charReversed->isChecked()}}
    + table->rows();
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
    const QWidget *page = m_tabs->currentWidget();
    return page ? page->findChild<ParameterTable *>() : nullptr;
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

#include "formtest.h"

#include "projectdump.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

namespace {

// The check walks the whole model at each change, which the sanitizer slows down to minutes.
#ifdef __SANITIZE_ADDRESS__
constexpr bool checksModelsByDefault = false;
#else
constexpr bool checksModelsByDefault = true;
#endif

bool isCell(const QWidget *widget)
{
    const QWidget *viewport = widget->parentWidget();
    return viewport && qobject_cast<const QTableView *>(viewport->parentWidget());
}

bool isInput(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget)
        || qobject_cast<const QCheckBox *>(widget);
}

} // namespace

FormTest::FormTest(QString name, int protocolRole, QString protocol)
    : m_name(std::move(name))
    , m_protocolRole(protocolRole)
    , m_protocol(std::move(protocol))
{
}

FormTest::~FormTest() = default;

void FormTest::init()
{
    m_surroundings = std::make_unique<Surroundings>();
    m_workspace = &m_surroundings->workspace;
    m_messages = &m_surroundings->messages;
    m_dialogs = &m_surroundings->dialogs;
    m_item = addItem(m_name);
    m_checksModels = checksModelsByDefault;
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qApp->installEventFilter(this);
}

void FormTest::cleanup()
{
    qApp->removeEventFilter(this);
    const int missing = m_messages->pending() + m_dialogs->pending();
    m_surroundings.reset();
    QVERIFY2(missing == 0, "not every expected message or dialog came");
}

void FormTest::prepare(QStandardItem *item) const
{
    if (!m_protocol.isEmpty()) {
        item->setData(m_protocol, m_protocolRole);
    }
}

QStandardItem *FormTest::addItem(const QString &name)
{
    auto *item = new QStandardItem(name);
    prepare(item);
    m_surroundings->tree.appendRow(item);
    return item;
}

void FormTest::removeItems()
{
    m_surroundings->tree.clear();
    m_item = nullptr;
}

QLineEdit *FormTest::edit(const QWidget &form, const QByteArray &name)
{
    return find<QLineEdit>(form, name);
}

QComboBox *FormTest::list(const QWidget &form, const QByteArray &name)
{
    return find<QComboBox>(form, name);
}

QCheckBox *FormTest::check(const QWidget &form, const QByteArray &name)
{
    return find<QCheckBox>(form, name);
}

void FormTest::click(const QWidget &form, const QByteArray &button)
{
    find<QPushButton>(form, button)->click();
}

void FormTest::typeInto(QLineEdit *edit, const QString &text)
{
    edit->clear();
    for (const QChar &letter : text) {
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void FormTest::turnWheel(QWidget *widget)
{
    const QPointF place = widget->rect().center();
    QWheelEvent wheel(place, widget->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // else it would not go on to what scrolls
    qApp->notify(widget, &wheel);
}

void FormTest::show(QWidget &form)
{
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
}

QStringList FormTest::textsOf(const QWidget &form, std::initializer_list<const char *> names)
{
    QStringList texts;
    for (const char *name : names) {
        texts.append(edit(form, name) ? edit(form, name)->text() : list(form, name)->currentText());
    }
    return texts;
}

QStringList FormTest::entriesOf(const QComboBox *list)
{
    QStringList texts;
    for (int index = 0; index < list->count(); ++index) {
        texts.append(list->itemText(index));
    }
    return texts;
}

QStringList FormTest::headersOf(const QTableView *view)
{
    QStringList texts;
    for (int column = 0; column < view->model()->columnCount(); ++column) {
        texts.append(view->model()->headerData(column, Qt::Horizontal).toString());
    }
    return texts;
}

QStringList FormTest::tabsOf(const QWidget &form)
{
    QStringList texts;
    const auto *tabs = form.findChild<QTabWidget *>();
    for (int index = 0; index < tabs->count(); ++index) {
        texts.append(tabs->tabText(index));
    }
    return texts;
}

QStringList FormTest::labelsOf(const QWidget &form)
{
    QStringList texts;
    const auto labels = form.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy()) {
            texts.append(label->text() + QLatin1Char('|') + label->buddy()->objectName());
        }
    }
    return texts;
}

QStringList FormTest::inputsOf(const QWidget &form)
{
    QStringList names;
    const auto widgets = form.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (isInput(widget) && !isCell(widget)) {
            names.append(widget->objectName());
        }
    }
    names.sort();
    return names;
}

QMap<int, QVariant> FormTest::rolesOf(const QStandardItem &item)
{
    return ProjectDump::values(&item);
}

RowList FormTest::rowsOf(const QStandardItem &item, int role)
{
    return item.data(role).value<RowList>();
}

void FormTest::setRows(QStandardItem *item, int role, const RowList &rows)
{
    item->setData(QVariant::fromValue(rows), role);
}

bool FormTest::eventFilter(QObject *watched, QEvent *event)
{
    // Whatever happens to a table first, it has its model by then.
    if (m_checksModels && watched->isWidgetType()) {
        const auto *view = qobject_cast<QTableView *>(watched);
        QAbstractItemModel *model = view ? view->model() : nullptr;
        if (model && !model->findChild<QAbstractItemModelTester *>(QString(), Qt::FindDirectChildrenOnly)) {
            new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest,
                                         model);
        }
    }
    return QObject::eventFilter(watched, event);
}

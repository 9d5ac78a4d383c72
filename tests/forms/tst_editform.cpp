#include "formtest.h"
#include "model/itemroles.h"
#include "services/serviceiec61850editdialog.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardmodbuseditdialog.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>

#include <algorithm>

// What all edit forms promise to the keyboard and the eye, checked on each of them inside a window.
class TestEditForm : public FormTest
{
    Q_OBJECT
public:
    TestEditForm()
        : FormTest("Edited", Qt::UserRole, QString())
    {
    }
private slots:
    void init() override;
    void cleanup() override;
    void noButtonIsPressedByEnter_data() { forms(); }
    void noButtonIsPressedByEnter();
    void enterPressesNoDefaultButtonEither();
    void enterAndEscapeAreHarmless_data() { forms(); }
    void enterAndEscapeAreHarmless();
    void everyInputHasALabel_data() { forms(); }
    void everyInputHasALabel();
    void tabKeyGoesDownTheForm_data() { forms(); }
    void tabKeyGoesDownTheForm();
    void fieldsStandInOneLine_data() { forms(); }
    void fieldsStandInOneLine();

private:
    void forms();
    // Makes the form of the data row in the window, shown, with what can be added to it added.
    EditForm *open();
    QList<QWidget *> inputs(const EditForm *form) const;

    std::unique_ptr<QWidget> m_window;
};

namespace {

bool isCell(const QWidget *widget)
{
    const QWidget *viewport = widget->parentWidget();
    return viewport && qobject_cast<const QTableWidget *>(viewport->parentWidget());
}

QString nameOf(const QWidget *widget)
{
    return QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') + widget->objectName();
}

bool takesTab(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)
        && !widget->focusProxy() && !isCell(widget);
}

} // namespace

void TestEditForm::init()
{
    FormTest::init();
    m_window = std::make_unique<QWidget>();
}

void TestEditForm::cleanup()
{
    m_window.reset();
    FormTest::cleanup();
}

void TestEditForm::forms()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("Modbus TCP") << "ModbusTCP";
    QTest::newRow("Modbus RTU") << "ModbusRTU";
    QTest::newRow("DLT645") << "DLT645";
    QTest::newRow("service") << "service";
}

EditForm *TestEditForm::open()
{
    QFETCH(QString, kind);
    EditForm *form = nullptr;
    auto *layout = new QVBoxLayout(m_window.get());
    if (kind == QLatin1String("service")) {
        m_item->setData(true, serviceEnableSslRole);
        m_item->setData(true, serviceIsVerifyClientCertRole);
        form = new ServiceIEC61850EditDialog(m_item, m_workspace, m_window.get());
    } else if (kind == QLatin1String("DLT645")) {
        form = new standardDLT645EditDialog(m_item, m_workspace, m_window.get());
    } else {
        m_item->setData(kind, standardModbusModeRole);
        form = new standardModbusEditDialog(m_item, m_workspace, m_window.get());
    }
    layout->addWidget(form);
    layout->addWidget(new QLineEdit(m_window.get())); // something of another dock
    m_window->resize(640, 1700);
    m_window->show();
    QCoreApplication::processEvents();
    for (const char *name : {"addTabButton", "addTabButton", "addButton"}) {
        if (auto *button = form->findChild<QPushButton *>(QLatin1String(name))) {
            button->click();
        }
    }
    QCoreApplication::processEvents();
    return form;
}

QList<QWidget *> TestEditForm::inputs(const EditForm *form) const
{
    QList<QWidget *> found;
    const auto widgets = form->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const bool input = qobject_cast<QLineEdit *>(widget) || qobject_cast<QComboBox *>(widget)
            || qobject_cast<QCheckBox *>(widget);
        // A filter is no field: it tells by itself what it is, beside what it filters.
        const bool isFilter = widget->objectName() == QLatin1String("filter");
        if (input && !isFilter && widget->isVisible() && !isCell(widget)) {
            found.append(widget);
        }
    }
    return found;
}

void TestEditForm::noButtonIsPressedByEnter()
{
    const EditForm *form = open();
    const auto buttons = form->findChildren<QPushButton *>();
    QVERIFY(buttons.size() >= 2);
    for (const QPushButton *button : buttons) {
        QVERIFY2(!button->autoDefault() && !button->isDefault(), qPrintable(button->objectName()));
    }
}

void TestEditForm::enterPressesNoDefaultButtonEither()
{
    EditForm form(m_window.get());
    QLineEdit edit(&form);
    QPushButton button(&form);
    button.setDefault(true);
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    m_window->show();
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClick(&edit, Qt::Key_Enter);
    QCOMPARE(clicked.size(), 0);
}

void TestEditForm::enterAndEscapeAreHarmless()
{
    EditForm *form = open();
    const QSignalSpy finished(form, &QDialog::finished);
    const QSignalSpy rejected(form, &QDialog::rejected);
    const auto before = rolesOf(*m_item);
    const auto widgets = form->findChildren<QWidget *>();
    int tried = 0;
    for (QWidget *widget : widgets) {
        if (takesTab(widget)) {
            ++tried;
            widget->setFocus();
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
                QTest::keyClick(widget, key);
            }
        }
    }
    QVERIFY(tried > 5);
    QCOMPARE(finished.size() + rejected.size(), 0);
    QVERIFY(form->isVisible());
    QCOMPARE(rolesOf(*m_item), before);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestEditForm::everyInputHasALabel()
{
    const EditForm *form = open();
    QSet<QWidget *> labelled;
    const auto labels = form->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        labelled.insert(label->buddy());
    }
    const QList<QWidget *> all = inputs(form);
    QVERIFY(all.size() > 5);
    for (QWidget *input : all) {
        // The trigger has no choice and shares its label with the period; a path is set by its button.
        const bool sharesLabel = input->objectName() == QLatin1String("trigger")
            || input->objectName().endsWith(QLatin1String("Path"));
        QVERIFY2(labelled.contains(input) || sharesLabel, qPrintable(input->objectName()));
    }
}

void TestEditForm::tabKeyGoesDownTheForm()
{
    EditForm *form = open();
    QList<QWidget *> order;
    for (QWidget *widget = form->nextInFocusChain(); form->isAncestorOf(widget);
         widget = widget->nextInFocusChain()) {
        if (takesTab(widget)) {
            order.append(widget);
        }
    }
    QCOMPARE(order.size() > 2 ? order.last()->objectName() : QString(), "cancelButton");
    for (int index = 1; index < order.size(); ++index) {
        const QWidget *widget = order.at(index);
        const QWidget *before = order.at(index - 1);
        const QPoint to = widget->mapTo(form, QPoint());
        const QPoint from = before->mapTo(form, QPoint());
        const bool oneRow = qAbs(to.y() - from.y()) < 12;
        QVERIFY2(oneRow ? to.x() >= from.x() : to.y() > from.y(),
                 qPrintable(nameOf(before) + " before " + nameOf(widget)));
    }
    // No input of the form is left to the end of the window.
    const QList<QWidget *> all = inputs(form);
    for (QWidget *input : all) {
        QVERIFY2(!takesTab(input) || order.contains(input), qPrintable(input->objectName()));
    }
}

void TestEditForm::fieldsStandInOneLine()
{
    const EditForm *form = open();
    QList<int> lefts;
    const QList<QWidget *> all = inputs(form);
    for (const QWidget *input : all) {
        if (input->objectName() != QLatin1String("collectionInterval")) { // stands behind its list
            lefts.append(input->mapTo(form, QPoint()).x());
        }
    }
    std::sort(lefts.begin(), lefts.end());
    QVERIFY2(lefts.last() - lefts.first() <= 4,
             qPrintable(QString("%1 to %2 pixels").arg(lefts.first()).arg(lefts.last())));
}

QTEST_MAIN(TestEditForm)
#include "tst_editform.moc"

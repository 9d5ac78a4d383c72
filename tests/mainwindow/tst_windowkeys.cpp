#include "mainwindow/windowkeys.h"

#include "messages.h"
#include "modaldialogs.h"
#include "seen.h"
#include "windowundertest.h"

#include <QComboBox>
#include <QTableWidget>

using Window = WindowUnderTest;

static const QString editStandard = "Edit Standard";
static const QString editService = "Edit Service";

// The keys of the window, in it and in a form that floats.
class TestWindowKeys : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void actionsHaveTheirKeysInEveryWindow_data();
    void actionsHaveTheirKeysInEveryWindow();
    void nothingHappensWhileADialogIsOpen();

    void saveIsOfTheFormWithTheFocus_data();
    void saveIsOfTheFormWithTheFocus();
    void saveFromTheTitleBarIsOfItsForm();
    void saveOutsideOfFormsDoesNothing();
    void heldKeySavesOnce();
    void formThatStaysOpenKeepsTheFocus();
    void whatIsBeingTypedIsCheckedFirst();

    void findGoesToTheLivePage_data();
    void findGoesToTheLivePage();
    void findUncoversTheLivePage();
    void findPrefersTheFormWithTheFocus();
    void findWithoutALivePageDoesNothing();

    void everyStopOfTheTabKeyCanBeSeen_data();
    void everyStopOfTheTabKeyCanBeSeen();

private:
    QDialog *openForm(const QStandardItem *item, const QString &title, bool floating = false);
    void showLiveValues();

    QScopedPointer<Window> m_window;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_standard = nullptr;
};

void TestWindowKeys::init()
{
    m_window.reset(new Window);
    m_project = m_window->addProject("plant");
    m_standard = Window::addStandard(m_project, "bus", "Modbus");
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
}

void TestWindowKeys::cleanup()
{
    m_window.reset();
    Window::settle();
}

// The form is active, and the focus is in its name.
QDialog *TestWindowKeys::openForm(const QStandardItem *item, const QString &title, bool floating)
{
    m_window->click(item);
    QCoreApplication::processEvents(); // it is laid out
    QDialog *form = m_window->form(title);
    if (floating) {
        m_window->tab(title)->setFloating();
        form->window()->show();
    }
    QApplication::setActiveWindow(form->window());
    Window::input<QLineEdit>(form, "name")->setFocus();
    return form;
}

void TestWindowKeys::showLiveValues()
{
    Protocol::dataMonitoringData report;
    report.projectName = "plant";
    report.plcName = "meter";
    m_window->onDataReceived(report); // the first makes the node only
    m_window->onDataReceived(report);
}

void TestWindowKeys::actionsHaveTheirKeysInEveryWindow_data()
{
    QTest::addColumn<bool>("floating");
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    const int control = Qt::ControlModifier;
    for (const bool floating : {false, true}) {
        const char *where = floating ? "floating" : "docked";
        QTest::addRow("New Project, %s", where)
            << floating << QByteArray("actionNew_Project") << int(Qt::Key_N) << control;
        QTest::addRow("Load Project, %s", where)
            << floating << QByteArray("actionLoad_Project") << int(Qt::Key_O) << control;
        QTest::addRow("Save All Project, %s", where)
            << floating << QByteArray("actionSave_All_Project") << int(Qt::Key_S)
            << int(Qt::ControlModifier | Qt::ShiftModifier);
        QTest::addRow("Trend, %s", where)
            << floating << QByteArray("actionTrend") << int(Qt::Key_T) << control;
        QTest::addRow("Record, %s", where) << floating << QByteArray("actionRecord") << int(Qt::Key_R)
                                           << int(Qt::ControlModifier | Qt::ShiftModifier);
        QTest::addRow("Open Recording, %s", where)
            << floating << QByteArray("actionOpen_Recording") << int(Qt::Key_O)
            << int(Qt::ControlModifier | Qt::ShiftModifier);
    }
}

void TestWindowKeys::actionsHaveTheirKeysInEveryWindow()
{
    QFETCH(bool, floating);
    QFETCH(QByteArray, action);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    const QDialog *form = openForm(m_standard, editStandard, floating);
    QCOMPARE(form->window() == m_window.data(), !floating);
    auto *tested = m_window->findChild<QAction *>(QString::fromLatin1(action));
    disconnect(tested, &QAction::triggered, nullptr, nullptr); // what they do is tested elsewhere
    const QSignalSpy triggered(tested, &QAction::triggered);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(triggered.count(), 1);
    QVERIFY(m_window->form(editStandard));
}

void TestWindowKeys::nothingHappensWhileADialogIsOpen()
{
    openForm(m_standard, editStandard, true);
    ModalDialogs dialogs;
    dialogs.expect([this](QWidget *dialog) {
        for (const Qt::Key key : {Qt::Key_N, Qt::Key_O, Qt::Key_S, Qt::Key_F}) {
            QTest::keyClick(dialog, key, Qt::ControlModifier);
        }
        QVERIFY(m_window->form(editStandard));
        dialog->close();
    });
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(dialogs.pending(), 0);
}

void TestWindowKeys::saveIsOfTheFormWithTheFocus_data()
{
    QTest::addColumn<bool>("floating");
    QTest::newRow("docked") << false;
    QTest::newRow("floating") << true;
}

void TestWindowKeys::saveIsOfTheFormWithTheFocus()
{
    QFETCH(bool, floating);
    openForm(m_window->projectModel()->item(0)->child(1)->child(0), editService);
    const QDialog *form = openForm(m_standard, editStandard, floating);
    Window::input<QLineEdit>(form, "name")->setText("feeder");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_standard->text(), "feeder");
    QCOMPARE(m_window->tab(editStandard), nullptr);
    QVERIFY(m_window->form(editService));
    QCOMPARE(m_window->messages().size(), 1);
}

void TestWindowKeys::saveFromTheTitleBarIsOfItsForm()
{
    const QDialog *form = openForm(m_standard, editStandard);
    Window::input<QLineEdit>(form, "name")->setText("feeder");
    QWidget *area = m_window->tab(editStandard)->dockAreaWidget();
    area->setFocusPolicy(Qt::StrongFocus);
    area->setFocus();
    QTest::keyClick(area, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_standard->text(), "feeder");
}

void TestWindowKeys::saveOutsideOfFormsDoesNothing()
{
    const QDialog *form = openForm(m_standard, editStandard);
    Window::input<QLineEdit>(form, "name")->setText("feeder");
    const QList<QWidget *> places{m_window->projectTree(), m_window->messageEditor()};
    for (QWidget *place : places) {
        place->setFocus();
        QTest::keyClick(place, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(m_standard->text(), "bus");
    }
    QVERIFY(m_window->form(editStandard));
}

void TestWindowKeys::heldKeySavesOnce()
{
    const QDialog *form = openForm(m_project->child(1)->child(0), editService);
    const QSignalSpy saved(Window::input<QPushButton>(form, "saveButton"), &QPushButton::clicked);
    for (const bool repeated : {false, true, true}) {
        QTest::simulateEvent(QApplication::focusWidget(), true, Qt::Key_S, Qt::ControlModifier, QString(),
                             repeated);
    }
    QCOMPARE(saved.count(), 1);
}

void TestWindowKeys::formThatStaysOpenKeepsTheFocus()
{
    const QDialog *form = openForm(m_project->child(1)->child(0), editService);
    auto *port = Window::input<QLineEdit>(form, "port");
    port->setFocus();
    port->setText("1021");
    QTest::keyClick(port, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(m_project->child(1)->child(0)->data(servicePortRole).toString(), "1021");
    QVERIFY(m_window->form(editService));
    QVERIFY(port->hasFocus());
}

// A cell that a check empties is not saved before the user has seen that.
void TestWindowKeys::whatIsBeingTypedIsCheckedFirst()
{
    const QDialog *form = openForm(m_standard, editStandard);
    Window::press(form, "addTabButton");
    auto *table = form->findChild<QTableWidget *>();
    Window::press(form, "addButton");
    QCoreApplication::processEvents();
    QLineEdit *length = nullptr;
    for (int column = 0; column < table->columnCount(); ++column) {
        if (auto *type = qobject_cast<QComboBox *>(table->cellWidget(0, column))) {
            type->setCurrentText("string"); // if it is the type, which gives it a length
        } else if (auto *editor = qobject_cast<QLineEdit *>(table->cellWidget(0, column))) {
            length = editor;
        }
    }
    QVERIFY(length && length->isEnabled());
    length->setFocus();
    length->setText("-");
    Messages messages;
    messages.expect();
    QTest::keyClick(length, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(messages.told().size(), 1);
    QVERIFY(m_window->form(editStandard));
}

void TestWindowKeys::findGoesToTheLivePage_data()
{
    QTest::addColumn<QString>("from");
    for (const char *place : {"tree", "messages", "form"}) {
        QTest::newRow(place) << QString::fromLatin1(place);
    }
}

void TestWindowKeys::findGoesToTheLivePage()
{
    QFETCH(QString, from);
    showLiveValues();
    auto *filter = m_window->monitoringTabs()->findChild<QLineEdit *>("filter");
    filter->setText("volt");
    if (from == QLatin1String("form")) {
        openForm(m_standard, editStandard);
    } else {
        QWidget *tree = m_window->projectTree();
        (from == QLatin1String("tree") ? tree : m_window->messageEditor())->setFocus();
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), filter);
    QCOMPARE(filter->selectedText(), "volt");
}

void TestWindowKeys::findUncoversTheLivePage()
{
    QWidget *messages = m_window->messageEditor();
    QTabWidget *live = m_window->monitoringTabs();
    const auto docks = m_window->dockManager()->dockWidgetsMap();
    const auto dockOf = [&docks](const QWidget *widget) {
        return *std::find_if(docks.begin(), docks.end(),
                             [widget](const ads::CDockWidget *dock) { return dock->widget() == widget; });
    };
    m_window->dockManager()->addDockWidgetTabToArea(dockOf(messages), dockOf(live)->dockAreaWidget());
    const auto find = [messages] {
        messages->setFocus();
        QTest::keyClick(messages, Qt::Key_F, Qt::ControlModifier);
    };
    find(); // there is nothing to be filtered
    QVERIFY(messages->isVisible());
    showLiveValues();
    find();
    QVERIFY(live->isVisible());
    QCOMPARE(QApplication::focusWidget(), live->findChild<QLineEdit *>("filter"));
}

void TestWindowKeys::findPrefersTheFormWithTheFocus()
{
    showLiveValues();
    QDialog *form = openForm(m_standard, editStandard);
    auto *hidden = new QLineEdit(form);
    auto *own = new QLineEdit(form);
    for (QLineEdit *filter : {hidden, own}) {
        filter->setObjectName("filter");
    }
    own->show();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), own);
}

void TestWindowKeys::findWithoutALivePageDoesNothing()
{
    m_window->projectTree()->setFocus();
    QTest::keyClick(m_window->projectTree(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), m_window->projectTree());
}

void TestWindowKeys::everyStopOfTheTabKeyCanBeSeen_data()
{
    QTest::addColumn<QString>("title");
    for (const char *title : {"", "Edit Project", "Edit Standard", "Edit Service", "Edit Box"}) {
        QTest::addRow("%s", *title ? title : "no form") << QString::fromLatin1(title);
    }
}

void TestWindowKeys::everyStopOfTheTabKeyCanBeSeen()
{
    QFETCH(QString, title);
    const QMap<QString, const QStandardItem *> items{
        {"Edit Project", m_project},
        {"Edit Standard", m_standard},
        {"Edit Service", m_project->child(1)->child(0)},
        {"Edit Box", Window::addBox(m_project, "gate", "127.0.13.17")},
    };
    if (items.contains(title)) {
        openForm(items.value(title), title);
    }
    m_window->projectTree()->setFocus();
    const int most = 100;
    QWidgetList stops;
    while (stops.size() < most && !stops.contains(QApplication::focusWidget())) {
        stops.append(QApplication::focusWidget());
        QVERIFY2(canBeSeen(stops.last()), stops.last()->metaObject()->className());
        QTest::keyClick(stops.last(), Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), m_window->projectTree()); // it goes round
    QVERIFY(stops.contains(m_window->messageEditor()));
    if (items.contains(title)) {
        QVERIFY(stops.contains(Window::input<QPushButton>(m_window->form(title), "saveButton")));
    }
}

QTEST_MAIN(TestWindowKeys)
#include "tst_windowkeys.moc"

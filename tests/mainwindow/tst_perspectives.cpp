#include "mainwindow/perspectives.h"

#include "docksundertest.h"
#include "formtest.h"
#include "modaldialogs.h"
#include "run.h"

#include <QAction>
#include <QComboBox>
#include <QInputDialog>
#include <QTemporaryDir>
#include <QWidgetAction>

// The named layouts, with any docks.
class TestPerspectives : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void actionIsASignal();
    void withoutAManagerNothingIsAsked();
    void savedOnesAreOfferedAndOpen();
    void wheelOpensNoOther();
    void managerMayDieWhileTheNameIsAsked();

private:
    QComboBox *list() const;
    QStringList names() const;
    void save(const QString &name);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<DocksUnderTest> m_window;
    Perspectives *m_perspectives = nullptr; // the window's
};

void TestPerspectives::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_folder->path()));
    m_window.reset(new DocksUnderTest);
    m_perspectives = new Perspectives(m_window.data());
}

QComboBox *TestPerspectives::list() const
{
    const auto *action = m_window->findChild<QWidgetAction *>("perspectiveListAction");
    return qobject_cast<QComboBox *>(action->defaultWidget());
}

QStringList TestPerspectives::names() const
{
    return FormTest::entriesOf(list());
}

void TestPerspectives::save(const QString &name)
{
    ModalDialogs dialogs;
    dialogs.expect([name](QWidget *dialog) {
        qobject_cast<QInputDialog *>(dialog)->setTextValue(name);
        qobject_cast<QInputDialog *>(dialog)->accept();
    });
    m_perspectives->save();
    QCOMPARE(dialogs.pending(), 0);
}

void TestPerspectives::actionIsASignal()
{
    QSignalSpy triggered(m_perspectives, &Perspectives::createTriggered);
    m_window->findChild<QAction *>("createPerspectiveAction")->trigger();
    QCOMPARE(triggered.count(), 1);
}

void TestPerspectives::withoutAManagerNothingIsAsked()
{
    ModalDialogs dialogs;
    m_perspectives->save();
}

void TestPerspectives::savedOnesAreOfferedAndOpen()
{
    m_perspectives->load(m_window->dockManager());
    QCOMPARE(names(), QStringList());
    RUN(save("All"));
    auto *message = qobject_cast<ads::CDockWidget *>(m_window->viewMenu()->actions().last()->parent());
    message->closeDockWidget();
    RUN(save("Few"));
    QCOMPARE(names(), QStringList({"All", "Few"}));
    m_window->dockManager()->openPerspective("All");
    QVERIFY(!message->isClosed());

    auto *next = new Perspectives(m_window.data());
    delete m_window->findChild<QWidgetAction *>("perspectiveListAction"); // the first one's
    delete m_perspectives;
    m_perspectives = next;
    next->load(m_window->dockManager());
    QCOMPARE(names(), QStringList({"All", "Few"}));
}

void TestPerspectives::wheelOpensNoOther()
{
    m_perspectives->load(m_window->dockManager());
    RUN(save("All"));
    RUN(save("Few"));
    list()->setCurrentText("All");
    FormTest::turnWheel(list());
    QCOMPARE(list()->currentText(), "All");
}

void TestPerspectives::managerMayDieWhileTheNameIsAsked()
{
    m_perspectives->load(m_window->dockManager());
    ModalDialogs dialogs;
    dialogs.expect([this](QWidget *dialog) {
        delete m_window->dockManager();
        qobject_cast<QInputDialog *>(dialog)->setTextValue("All");
        qobject_cast<QInputDialog *>(dialog)->accept();
    });
    m_perspectives->save();
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(names(), QStringList());
    QVERIFY(!QFile::exists("Settings.ini"));
}

QTEST_MAIN(TestPerspectives)
#include "tst_perspectives.moc"

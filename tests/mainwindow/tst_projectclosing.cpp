#include "fakebox.h"
#include "messages.h"
#include "windowundertest.h"

#include <QCursor>

using Window = WindowUnderTest;

class TestProjectClosing : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void closingAsksSavesAndRemoves();
    void closingWithoutSavingRemoves();
    void cursorWaitsWhileTheProjectGoes();
    void cancelledClosingKeepsTheProjectAndClosesAllTabs();
    void closingActsOnProjectsAlone();
    void closingLeavesMonitoringTabs();
    void closingEndsTheBoxSession();
    void slotCloseProjectSavesAndRemovesNothing();
    void slotCloseProjectWithoutProjectsOnlyLogs();

    void leavingWithoutProjectsAsksAndStoresNothing();
    void leavingAsksAndSaves();
    void leavingWithoutSavingStoresTheLayout();
    void leavingTakesAllFormsAndSessionsAlong();
    void cancelledLeavingKeepsTheProgram();
    void leavingTwiceAsksTwiceAndKeepsTheFirstLayout();

private:
    QString savedText(const QString &name) const
    {
        return "Save Successful|JSON data saved to file:\n" + m_folder->filePath(name);
    }

    static QByteArray layoutFile()
    {
        QFile file("Settings.ini");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Window> m_window;
};

void TestProjectClosing::init()
{
    QFile::remove("Settings.ini");
    m_folder.reset(new QTemporaryDir);
    m_window.reset(new Window);
}

static const QString editProject = "Edit Project";

static const QString closeQuestion = "Save Changes|Do you want to save changes before deleting the project?";
static const QString leaveQuestion = "Save Changes|Do you want to save all projects before closing them?";

void TestProjectClosing::closingAsksSavesAndRemoves()
{
    m_window->addProject("mill");
    m_window->select(m_window->addProject("plant", m_folder->path()));
    Messages messages;
    messages.expect(QMessageBox::Yes);
    messages.expect();
    m_window->slotDeleteProject();
    QCOMPARE(messages.told(), QStringList({closeQuestion, savedText("plant.json")}));
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
    QCOMPARE(m_window->projectModel()->item(0)->text(), "mill");
    QVERIFY(QFile::exists(m_folder->filePath("plant.json")));
}

void TestProjectClosing::closingWithoutSavingRemoves()
{
    m_window->select(m_window->addProject("plant", m_folder->path()));
    Messages messages;
    messages.expect(QMessageBox::No);
    m_window->slotDeleteProject();
    QCOMPARE(messages.told(), QStringList(closeQuestion));
    QCOMPARE(m_window->projectModel()->rowCount(), 0);
    QVERIFY(!QFile::exists(m_folder->filePath("plant.json")));
}

void TestProjectClosing::cursorWaitsWhileTheProjectGoes()
{
    m_window->select(m_window->addProject("Riverside"));
    int waits = 0;
    connect(m_window->projectModel(), &QAbstractItemModel::rowsAboutToBeRemoved, this, [&waits] {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        waits += cursor && cursor->shape() == Qt::WaitCursor ? 1 : 0;
    });
    Messages messages;
    messages.expect(QMessageBox::No);
    m_window->slotDeleteProject();
    QCOMPARE(waits, 1);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestProjectClosing::cancelledClosingKeepsTheProjectAndClosesAllTabs()
{
    QStandardItem *other = m_window->addProject("mill");
    m_window->click(Window::addBox(other, "gate", "127.0.13.9"));
    QStandardItem *project = m_window->addProject("plant");
    m_window->click(project);
    const QPointer<QDialog> boxForm = m_window->form("Edit Box");
    const QPointer<QDialog> projectForm = m_window->form(editProject);
    QVERIFY(boxForm && projectForm);
    Messages messages;
    messages.expect(QMessageBox::Cancel);
    m_window->slotDeleteProject();
    QCOMPARE(messages.told(), QStringList(closeQuestion));
    QCOMPARE(m_window->projectModel()->rowCount(), 2);
    QCOMPARE(m_window->projectModel()->item(1), project);
    QCOMPARE(m_window->tabs("Edit Box").size(), 0);
    QCOMPARE(m_window->tabs(editProject).size(), 0);
    Window::settle();
    QVERIFY(!boxForm && !projectForm);
}

void TestProjectClosing::closingActsOnProjectsAlone()
{
    Messages messages;
    m_window->slotDeleteProject();
    QStandardItem *project = m_window->addProject("plant");
    m_window->click(project);
    m_window->select(project->child(1));
    m_window->slotDeleteProject();
    m_window->select(project->child(1)->child(0));
    m_window->slotDeleteProject();
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
    QVERIFY(m_window->form(editProject));
}

void TestProjectClosing::closingLeavesMonitoringTabs()
{
    m_window->select(m_window->addProject("plant"));
    m_window->monitoringTabs()->addTab(new QWidget, "meter");
    Messages messages;
    messages.expect(QMessageBox::No);
    m_window->slotDeleteProject();
    QCOMPARE(m_window->monitoringTabs()->count(), 1);
}

void TestProjectClosing::closingEndsTheBoxSession()
{
    const FakeBox box("127.0.13.1");
    QStandardItem *project = m_window->addProject("plant");
    m_window->click(Window::addBox(project, "gate", "127.0.13.1"));
    QTRY_VERIFY(box.isLinked());
    m_window->select(project);
    Messages messages;
    messages.expect(QMessageBox::No);
    m_window->slotDeleteProject();
    QTRY_VERIFY(!box.isLinked());
}

void TestProjectClosing::slotCloseProjectSavesAndRemovesNothing()
{
    m_window->addProject("plant", m_folder->path());
    Messages messages;
    messages.expect(QMessageBox::No);
    m_window->slotCloseProject();
    QVERIFY(!QFile::exists(m_folder->filePath("plant.json")));
    messages.expect(QMessageBox::Yes);
    messages.expect();
    m_window->slotCloseProject();
    QCOMPARE(messages.told(), QStringList({leaveQuestion, leaveQuestion, savedText("plant.json")}));
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

void TestProjectClosing::slotCloseProjectWithoutProjectsOnlyLogs()
{
    Messages messages;
    QTest::ignoreMessage(QtDebugMsg, "No projects found. Aborting close project operation.");
    m_window->slotCloseProject();
    QCOMPARE(messages.told(), QStringList());
}

void TestProjectClosing::leavingWithoutProjectsAsksAndStoresNothing()
{
    Messages messages;
    QTest::ignoreMessage(QtDebugMsg, "No projects found. Closing without prompt.");
    QVERIFY(m_window->close());
    Window::settle();
    QCOMPARE(messages.told(), QStringList());
    QVERIFY(!QFile::exists("Settings.ini"));
    QVERIFY(m_window->dockManager());
}

void TestProjectClosing::leavingAsksAndSaves()
{
    m_window->addProject("plant", m_folder->path());
    m_window->addProject("mill", m_folder->path());
    Messages messages;
    messages.expect(QMessageBox::Yes);
    messages.expect();
    messages.expect();
    QVERIFY(m_window->close());
    QCOMPARE(messages.told(), QStringList({leaveQuestion, savedText("plant.json"), savedText("mill.json")}));
    QVERIFY(QFile::exists("Settings.ini"));
}

void TestProjectClosing::leavingWithoutSavingStoresTheLayout()
{
    m_window->click(m_window->addProject("plant", m_folder->path()));
    Messages messages;
    messages.expect(QMessageBox::No);
    QVERIFY(m_window->close());
    QCOMPARE(messages.told(), QStringList(leaveQuestion));
    QVERIFY(QDir(m_folder->path()).isEmpty());
    const QSettings settings("Settings.ini", QSettings::IniFormat);
    QCOMPARE(settings.allKeys(),
             QStringList({"mainWindow/DockingState", "mainWindow/Geometry", "mainWindow/State"}));
    QVERIFY(m_window->dockManager());
    Window::settle();
    QVERIFY(!m_window->dockManager());
    // What comes late to a window without docks meets nothing.
    m_window->slotEditProject();
    m_window->slotDeleteProject();
    m_window->closeTabByName("meter");
    m_window->prjectTreeView_MenuPopup(QPoint(5, 5));
    QCOMPARE(messages.told().size(), 1);
}

void TestProjectClosing::leavingTakesAllFormsAndSessionsAlong()
{
    const FakeBox box("127.0.13.1");
    const QStandardItem *project = m_window->addProject("plant", m_folder->path());
    m_window->click(project);
    m_window->click(Window::addBox(project, "gate", "127.0.13.1"));
    m_window->click(Window::addStandard(project, "bus", "Modbus"));
    m_window->click(project->child(1)->child(0));
    QList<QPointer<QDialog>> forms;
    for (const char *title : {"Edit Project", "Edit Box", "Edit Standard", "Edit Service"}) {
        forms.append(m_window->form(QLatin1String(title)));
        QVERIFY(forms.last());
    }
    QTRY_VERIFY(box.isLinked());
    Messages messages;
    messages.expect(QMessageBox::No);
    QVERIFY(m_window->close());
    Window::settle();
    for (const QPointer<QDialog> &form : forms) {
        QVERIFY(!form);
    }
    QTRY_VERIFY(!box.isLinked());
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

void TestProjectClosing::cancelledLeavingKeepsTheProgram()
{
    m_window->click(m_window->addProject("plant"));
    Messages messages;
    messages.expect(QMessageBox::Cancel);
    QVERIFY(!m_window->close());
    Window::settle();
    QVERIFY(m_window->isVisible());
    QVERIFY(m_window->dockManager());
    QVERIFY(m_window->form(editProject));
    QVERIFY(!QFile::exists("Settings.ini"));
}

void TestProjectClosing::leavingTwiceAsksTwiceAndKeepsTheFirstLayout()
{
    m_window->addProject("plant", m_folder->path());
    Messages messages;
    messages.expect(QMessageBox::No);
    messages.expect(QMessageBox::No);
    QVERIFY(m_window->close());
    Window::settle();
    const QByteArray layout = layoutFile();
    QVERIFY(!layout.isEmpty());
    m_window->show();
    QVERIFY(m_window->close());
    QCOMPARE(messages.told(), QStringList({leaveQuestion, leaveQuestion}));
    QCOMPARE(layoutFile(), layout);
}

QTEST_MAIN(TestProjectClosing)
#include "tst_projectclosing.moc"

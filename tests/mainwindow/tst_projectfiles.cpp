#include "document/projectwriter.h"
#include "files.h"
#include "language.h"
#include "mainwindow/projectfiles.h"
#include "messages.h"
#include "modaldialogs.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "modelwatch.h"
#include "projectdump.h"

#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <QtTest>

using Files::contents;
using Files::put;

class TestProjectFiles : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init();
    void cleanup();
    void savingTellsThePath();
    void saveThatFailsShowsNothing();
    void anyItemIsSavedAsAProject();
    void noProjectIsALogLine();
    void allProjectsAreSavedInRowOrder();
    void failureStopsNoneOfTheRest();
    void noProjectsSaveSilently();
    void noModelIsALogLine();
    void loadingBuildsExpandsAndTells();
    void loadingMergesIntoTheOpenProject();
    void projectIsNamedByTheDocumentAlone();
    void loadThatFailsShowsNothing_data();
    void loadThatFailsShowsNothing();
    void emptyObjectLoads();
    void viewMayBeGone();
    void textsAreThoseOfTheMainWindow();
    void cursorWaitsDuringTheWork_data();
    void cursorWaitsDuringTheWork();
    void busyCursorIsGoneWhenTheBoxStands();
    void dialogAsksForAFile();
    void cancelledDialogIsALogLine();

private:
    QStandardItem *addProject(const QString &name, const QString &folder);
    QString path(const char *name) const { return m_dir->filePath(QString::fromUtf8(name)); }
    static QString saved(const QString &file) { return "Save Successful|JSON data saved to file:\n" + file; }

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<QStandardItemModel> m_model;
    QScopedPointer<QTreeView> m_view;
    QScopedPointer<Messages> m_messages;
    ProjectFiles *m_files = nullptr; // The view's.
};

void TestProjectFiles::init()
{
    m_dir.reset(new QTemporaryDir);
    m_model.reset(new QStandardItemModel);
    watchModel(m_model.data());
    m_view.reset(new QTreeView);
    m_view->setModel(m_model.data());
    m_messages.reset(new Messages);
    m_files = new ProjectFiles(m_view.data(), m_model.data(), m_view.data());
}

void TestProjectFiles::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    QVERIFY(!QGuiApplication::overrideCursor());
    m_messages.reset();
    m_view.reset();
    m_model.reset();
    m_dir.reset();
}

QStandardItem *TestProjectFiles::addProject(const QString &name, const QString &folder)
{
    QStandardItem *project = ProjectTree::makeProject(name, folder, QString());
    ProjectTree::appendMissingFolders(project);
    m_model->appendRow(project);
    return project;
}

void TestProjectFiles::savingTellsThePath()
{
    QStandardItem *project = addProject("P", m_dir->path());
    m_messages->expect();
    m_files->saveProject(project);
    QCOMPARE(m_messages->told(), QStringList({saved(path("P.json"))}));
    QCOMPARE(contents(path("P.json")), projectDocument(project));
}

void TestProjectFiles::saveThatFailsShowsNothing()
{
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Could not open file for writing: \".+\"$"));
    m_files->saveProject(addProject("P", path("missing")));
    QCOMPARE(m_messages->told(), QStringList());
}

void TestProjectFiles::anyItemIsSavedAsAProject()
{
    QStandardItem *folder = addProject("P", m_dir->path())->child(0);
    folder->setData(m_dir->path(), projectPathRole);
    m_messages->expect();
    m_files->saveProject(folder);
    QCOMPARE(contents(path("Standard.json")),
             QByteArray("{\n    \"description\": \"\",\n    \"name\": \"Standard\"\n}\n"));
}

void TestProjectFiles::noProjectIsALogLine()
{
    addProject("P", m_dir->path());
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    m_files->saveProject(nullptr);
    QVERIFY(!QFile::exists(path("P.json")));
}

void TestProjectFiles::allProjectsAreSavedInRowOrder()
{
    for (const char *name : {"C", "A", "B"}) {
        addProject(QString::fromUtf8(name), m_dir->path());
        m_messages->expect();
    }
    m_files->saveAll();
    QCOMPARE(m_messages->told(),
             QStringList({saved(path("C.json")), saved(path("A.json")), saved(path("B.json"))}));
    for (int row = 0; row < 3; ++row) {
        const QStandardItem *project = m_model->item(row);
        QCOMPARE(contents(projectFilePath(project)), projectDocument(project));
    }
}

void TestProjectFiles::failureStopsNoneOfTheRest()
{
    addProject("A", m_dir->path());
    addProject("B", path("missing"));
    addProject("C", m_dir->path());
    m_messages->expect();
    m_messages->expect();
    m_files->saveAll();
    QCOMPARE(m_messages->told(), QStringList({saved(path("A.json")), saved(path("C.json"))}));
}

void TestProjectFiles::noProjectsSaveSilently()
{
    m_files->saveAll();
    QCOMPARE(m_messages->told(), QStringList());
    m_model->setRowCount(2); // Rows without an item are passed over.
    m_files->saveAll();
    QCOMPARE(m_messages->told(), QStringList());
}

void TestProjectFiles::noModelIsALogLine()
{
    ProjectFiles files(nullptr, nullptr, nullptr);
    QTest::ignoreMessage(QtDebugMsg, "Root item not found.");
    files.saveAll();
}

void TestProjectFiles::loadingBuildsExpandsAndTells()
{
    const QString sample = QString(TEST_DATA_DIR "/riverside-substation.json");
    m_messages->expect();
    m_files->loadFile(sample);
    QCOMPARE(m_messages->told(), QStringList({"Load Successful|JSON data loaded from file:\n" + sample}));
    QCOMPARE(m_model->rowCount(), 1);
    const QStandardItem *project = m_model->item(0);
    QCOMPARE(project->text(), "Riverside substation");
    QCOMPARE(project->data(projectPathRole).toString(), QFileInfo(sample).absolutePath());
    QVERIFY(m_view->isExpanded(project->index()));
    for (int row = 0; row < 3; ++row) {
        QVERIFY(m_view->isExpanded(project->child(row)->index()));
    }
    QCOMPARE(projectDocument(project), contents(sample));
}

void TestProjectFiles::loadingMergesIntoTheOpenProject()
{
    QStandardItem *project = addProject("P", "/elsewhere");
    m_messages->expect();
    m_files->loadFile(QString(TEST_DATA_DIR "/one-slave.json"));
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(ProjectDump::shape(project), "P(Standard(M()) Service(IEC61850()) Box(B()) Data())");
    QCOMPARE(project->data(projectPathRole).toString(), "/elsewhere");
    QCOMPARE(m_messages->told().size(), 1); // Nothing but the success is told, and nothing asked.
}

void TestProjectFiles::projectIsNamedByTheDocumentAlone()
{
    QVERIFY(QFile::copy(QString(TEST_DATA_DIR "/empty.json"), path("other.json")));
    m_messages->expect();
    m_files->loadFile(path("other.json"));
    m_messages->expect();
    m_files->saveProject(m_model->item(0));
    QCOMPARE(m_messages->told().last(), saved(path("Empty.json")));
    QCOMPARE(contents(path("Empty.json")), contents(path("other.json")));
}

void TestProjectFiles::loadThatFailsShowsNothing_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("logged");
    const QString unreadable = "^Could not open file for reading: \".+\"$";
    const QString invalid = "^Failed to create valid JSON document$";
    QTest::newRow("no path") << QString() << QByteArray() << "^File path is empty\\.$";
    QTest::newRow("missing") << "missing.json" << QByteArray() << unreadable;
    QTest::newRow("directory") << "." << QByteArray() << unreadable;
    QTest::newRow("empty") << "x.json" << QByteArray("") << invalid;
    QTest::newRow("array") << "x.json" << QByteArray("[{\"name\": \"P\"}]") << invalid;
    QTest::newRow("not JSON") << "x.json" << QByteArray("name: P") << invalid;
}

void TestProjectFiles::loadThatFailsShowsNothing()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, logged);
    put(path("x.json"), bytes);
    addProject("P", m_dir->path());
    const QStringList before = ProjectDump::tree(m_model->item(0));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(logged));
    m_files->loadFile(file.isEmpty() ? file : m_dir->filePath(file));
    QCOMPARE(m_messages->told(), QStringList());
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(ProjectDump::tree(m_model->item(0)), before);
}

void TestProjectFiles::emptyObjectLoads()
{
    put(path("x.json"), "{}");
    m_messages->expect();
    m_files->loadFile(path("x.json"));
    QCOMPARE(ProjectDump::shape(m_model->item(0)), "(Standard() Service() Box() Data())");
    QCOMPARE(m_messages->told().size(), 1);
}

void TestProjectFiles::viewMayBeGone()
{
    auto *view = new QTreeView;
    ProjectFiles files(m_view.data(), m_model.data(), view);
    delete view;
    m_messages->expect();
    files.loadFile(QString(TEST_DATA_DIR "/empty.json"));
    QCOMPARE(m_model->rowCount(), 1);
}

void TestProjectFiles::textsAreThoseOfTheMainWindow()
{
    const Language chinese(QString(),
                           {{"Save Successful", "SAVED"},
                            {"JSON data saved to file:\n%1", "to %1"},
                            {"Load Successful", "LOADED"},
                            {"JSON data loaded from file:\n%1", "from %1"}});
    QStandardItem *project = addProject("P", m_dir->path());
    m_messages->expect();
    m_files->saveProject(project);
    m_messages->expect();
    m_files->loadFile(path("P.json"));
    QCOMPARE(m_messages->told(),
             QStringList({"SAVED|to " + path("P.json"), "LOADED|from " + path("P.json")}));
}

// Whether the wait cursor was shown at each debug line of the work.
static QVector<bool> waiting; // clazy:exclude=non-pod-global-static

static void noteCursor(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type == QtDebugMsg) { // A box has warnings of the platform come.
        const QCursor *cursor = QGuiApplication::overrideCursor();
        waiting.append(cursor && cursor->shape() == Qt::WaitCursor);
    }
}

void TestProjectFiles::cursorWaitsDuringTheWork_data()
{
    QTest::addColumn<QString>("save"); // folder of the project, below that of the test; null to load
    QTest::addColumn<QString>("load"); // file
    QTest::addColumn<QVector<bool>>("shown");
    QTest::addColumn<bool>("told");

    const QVector<bool> once{true};
    QTest::newRow("saved") << QString("") << QString() << once << true;
    QTest::newRow("save failed") << "/not/there" << QString() << once << false;
    // A loaded document tells its name and its description.
    QTest::newRow("loaded") << QString() << "good.json" << QVector<bool>{true, true} << true;
    QTest::newRow("no file") << QString() << "none.json" << once << false;
    QTest::newRow("no document") << QString() << "bad.json" << once << false;
}

void TestProjectFiles::cursorWaitsDuringTheWork()
{
    QFETCH(const QString, save);
    QFETCH(const QString, load);
    QFETCH(const bool, told);
    put(path("good.json"), "{\"name\": \"P\"}");
    put(path("bad.json"), "{");
    if (told) {
        m_messages->expect();
    }
    waiting.clear();
    const QtMessageHandler before = qInstallMessageHandler(noteCursor);
    if (save.isNull()) {
        m_files->loadFile(m_dir->filePath(load));
    } else {
        m_files->saveProject(addProject("P", m_dir->path() + save));
    }
    qInstallMessageHandler(before);
    QTEST(waiting, "shown");
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(m_messages->told().size(), told ? 1 : 0);
}

void TestProjectFiles::busyCursorIsGoneWhenTheBoxStands()
{
    int boxes = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&boxes] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            QVERIFY(!QGuiApplication::overrideCursor());
            ++boxes;
            box->accept();
        }
    });
    const UnwatchedModals answeredByTheTimer;
    timer.start(0);
    m_files->saveProject(addProject("P", m_dir->path()));
    m_files->loadFile(path("P.json"));
    QCOMPARE(boxes, 2);
}

void TestProjectFiles::dialogAsksForAFile()
{
    put(path("x.json"), "{\"name\": \"P\"}");
    QStringList seen;
    ModalDialogs dialogs;
    dialogs.expect([this, &seen](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        seen =
            QStringList({dialog->windowTitle(), dialog->directory().absolutePath()}) + dialog->nameFilters();
        QCOMPARE(dialog->parentWidget(), m_view.data());
        dialog->setDirectory(m_dir->path());
        dialog->selectFile(path("x.json"));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    m_messages->expect();
    m_files->load();
    QCOMPARE(seen, QStringList({"Open JSON File", QDir::homePath(), "JSON Files (*.json)"}));
    QCOMPARE(m_messages->told(),
             QStringList({"Load Successful|JSON data loaded from file:\n" + path("x.json")}));
    QCOMPARE(m_model->item(0)->text(), "P");
}

void TestProjectFiles::cancelledDialogIsALogLine()
{
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) { dialog->close(); });
    QTest::ignoreMessage(QtDebugMsg, "File path is empty.");
    m_files->load();
    QCOMPARE(m_model->rowCount(), 0);
}

QTEST_MAIN(TestProjectFiles)
#include "tst_projectfiles.moc"

#include "files.h"
#include "messages.h"
#include "modaldialogs.h"
#include "projectdump.h"
#include "windowundertest.h"

#include <QFileDialog>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QToolBar>

using Window = WindowUnderTest;

// PLCs and Servers have forms, slots and objects of the document, and nothing in the window leads to them: no
// project gets their folders, and no action does anything with such a node. The menus and clicks of the tree
// are with its own tests.
class TestDormantKinds : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init() { m_window.reset(new Window); }
    void cleanup() { m_window.reset(); }

    void noActionLeadsToThem_data();
    void noActionLeadsToThem();
    void newProjectHasNoFolderForThem();
    void loadedProjectHasNoFolderForThem();

private:
    // Every action of the menu bar's menus and of the tool bars, each once.
    QList<QAction *> actions() const;
    QString shape() const { return ProjectDump::shape(m_window->projectModel()->item(0)); }

    QScopedPointer<Window> m_window;
};

static const QString fourFolders = "plant(Standard() Service(IEC61850()) Box() Data())";

QList<QAction *> TestDormantKinds::actions() const
{
    QList<QWidget *> bars;
    for (QMenu *menu : m_window->menuBar()->findChildren<QMenu *>()) {
        bars.append(menu);
    }
    for (QToolBar *bar : m_window->findChildren<QToolBar *>()) {
        bars.append(bar);
    }
    QList<QAction *> found;
    for (const QWidget *bar : qAsConst(bars)) {
        const QList<QAction *> own = bar->actions();
        for (QAction *action : own) {
            if (!action->menu() && !action->isSeparator() && !found.contains(action)) {
                found.append(action);
            }
        }
    }
    return found;
}

void TestDormantKinds::noActionLeadsToThem_data()
{
    QTest::addColumn<int>("index");
    m_window.reset(new Window);
    const QList<QAction *> all = actions();
    for (int index = 0; index < all.size(); ++index) {
        QTest::addRow("%d %s", index, qPrintable(all.at(index)->text())) << index;
    }
    m_window.reset();
    QVERIFY(all.size() > 6); // those of the menus, and the docks of "View"
}

void TestDormantKinds::noActionLeadsToThem()
{
    QFETCH(int, index);
    const QStandardItem *project = m_window->addProject("plant");
    QList<const QStandardItem *> nodes;
    for (const QString &text : {ProjectTree::plcFolder, ProjectTree::serverFolder}) {
        QStandardItem *folder =
            ProjectTree::appendDefinition(m_window->projectModel()->item(0), text, QString());
        QStandardItem *one = ProjectTree::appendDefinition(folder, "one", QString());
        one->setData("MQTT", serverProtocolRole);
        nodes += {folder, one};
    }
    const QStringList before = ProjectDump::tree(project);
    static const QRegularExpression ofThem("PLC|Server|ImportData");
    for (const QStandardItem *node : qAsConst(nodes)) {
        m_window->select(node);
        ModalDialogs dialogs;
        dialogs.allowOthers();
        Messages messages;
        messages.allowOthers();
        actions().at(index)->trigger();
        QCOMPARE(dialogs.others().filter(ofThem), QStringList());
        QCOMPARE(m_window->countOf("Edit PLC"), 0);
        QCOMPARE(m_window->countOf("Edit Server"), 0);
        for (const QWidget *top : QApplication::topLevelWidgets()) {
            QVERIFY(!QString::fromLatin1(top->metaObject()->className()).contains(ofThem));
        }
        QCOMPARE(ProjectDump::tree(project), before);
    }
}

void TestDormantKinds::newProjectHasNoFolderForThem()
{
    m_window->addProject("plant");
    QCOMPARE(shape(), fourFolders);
}

// Whatever a document holds beside the keys that are read.
void TestDormantKinds::loadedProjectHasNoFolderForThem()
{
    const QTemporaryDir dir;
    const QString file = dir.filePath("plant.json");
    QByteArray json = R"({"name": "plant", "services": [{"name": "IEC61850", "protocol": "IEC61850"}])";
    for (const char *key : {"PLC", "plc", "PLCs", "plcs", "Server", "server", "Servers", "servers"}) {
        json += QByteArray(", \"") + key + R"(": [{"name": "one", "protocol": "MQTT"}])";
    }
    Files::put(file, json + '}');
    ModalDialogs dialogs;
    dialogs.expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        dialog->setDirectory(dir.path());
        dialog->selectFile(file);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    Messages messages;
    messages.expect();
    m_window->loadJsonFile();
    QCOMPARE(messages.pending(), 0);
    QCOMPARE(shape(), fourFolders);
}

QTEST_MAIN(TestDormantKinds)
#include "tst_dormantkinds.moc"

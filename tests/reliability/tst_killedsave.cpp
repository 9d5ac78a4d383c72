#include "document/projectfile.h"
#include "document/projectwriter.h"
#include "files.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "rehearsals.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardItem>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

namespace {

// Two versions of one project, a few hundred kilobytes each.
std::unique_ptr<QStandardItem> version(const QString &folder, QChar fill)
{
    std::unique_ptr<QStandardItem> project(ProjectTree::makeProject("plant", folder, QString(400000, fill)));
    ProjectTree::appendMissingFolders(project.get());
    return project;
}

// What the child process does until it is killed.
int saveForEver(const QString &folder)
{
    const auto first = version(folder, QLatin1Char('a'));
    const auto second = version(folder, QLatin1Char('b'));
    std::puts("saving");
    std::fflush(stdout);
    while (saveProject(first.get()).ok() && saveProject(second.get()).ok()) {}
    return 1;
}

} // namespace

// The program is killed at any moment while it saves: the file is always one of the two whole documents.
class TestKilledSave : public QObject
{
    Q_OBJECT
private slots:
    void fileIsAlwaysWhole();
};

void TestKilledSave::fileIsAlwaysWhole()
{
    const QTemporaryDir folder;
    const QByteArray first = projectDocument(version(folder.path(), QLatin1Char('a')).get());
    const QByteArray second = projectDocument(version(folder.path(), QLatin1Char('b')).get());
    const QString path = folder.filePath("plant.json");
    QVERIFY(saveProject(version(folder.path(), QLatin1Char('a')).get()).ok());

    int kills = 0;
    for (int time = 0; time < rehearsals(30); ++time) {
        QProcess child;
        child.setStandardErrorFile(QProcess::nullDevice());
        child.start(QCoreApplication::applicationFilePath(), {"--save-for-ever", folder.path()});
        QVERIFY(child.waitForStarted());
        QVERIFY(child.waitForReadyRead(60000));
        QThread::usleep(QRandomGenerator::global()->bounded(8000U));
        QCOMPARE(child.state(), QProcess::Running);
        child.kill();
        QVERIFY(child.waitForFinished());
        ++kills;
        const QByteArray after = Files::contents(path);
        QVERIFY2(after == first || after == second, qPrintable(QString("kill %1").arg(kills)));
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--save-for-ever") {
        return saveForEver(arguments.value(2));
    }
    TestKilledSave test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_killedsave.moc"

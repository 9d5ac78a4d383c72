#include "document/projectfile.h"
#include "documenttest.h"
#include "files.h"
#include "hardships.h"

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>

using Files::contents;
using Files::put;
using Hardships::FullDisk;
using Hardships::NotRoot;

namespace {

// Modes of a folder: one takes no new file, the other lets nobody touch another's files.
constexpr mode_t readOnly = 0555;
constexpr mode_t sticky = 01777;

void setMode(const QString &path, mode_t mode)
{
    if (chmod(QFile::encodeName(path).constData(), mode) != 0) {
        qFatal("the mode of %s can't be changed", qPrintable(path));
    }
}

struct stat statOf(const QString &path)
{
    struct stat result = {};
    if (stat(QFile::encodeName(path).constData(), &result) != 0) {
        qFatal("nothing is known of %s", qPrintable(path));
    }
    return result;
}

} // namespace

// Saving where no new file can take the old one's place.
class TestProjectFileInPlace : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void readOnlyFolderWritesItsFileInPlace_data();
    void readOnlyFolderWritesItsFileInPlace();
    void readOnlyFolderTakesNoNewFile();
    void stickyFolderWritesAFileOfSomebodyElseInPlace();
    void readOnlyFileOfSomebodyElseIsRefused();
    void fullDiskKeepsTheOldFile_data();
    void fullDiskKeepsTheOldFile();
    void pipeThatNobodyReadsHoldsNothingUp();

private:
    QString file() const { return m_dir->filePath("P.json"); }
    QStringList files() const
    {
        return QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    void putOldFile(const QByteArray &bytes, mode_t mode) const
    {
        put(file(), bytes);
        setMode(file(), mode);
    }

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<QStandardItem> m_project;
};

void TestProjectFileInPlace::init()
{
    m_dir.reset(new QTemporaryDir(QDir::tempPath() + "/projectfileinplace-XXXXXX"));
    QVERIFY(m_dir->isValid());
    m_project.reset(ProjectTree::makeProject("P", m_dir->path(), "D"));
    ProjectTree::appendMissingFolders(m_project.data());
}

void TestProjectFileInPlace::cleanup()
{
    setMode(m_dir->path(), 0700);
    m_project.reset();
    m_dir.reset();
}

void TestProjectFileInPlace::readOnlyFolderWritesItsFileInPlace_data()
{
    QTest::addColumn<int>("oldSize");
    QTest::addColumn<mode_t>("mode");
    QTest::newRow("shorter") << 5 << mode_t(0666);
    QTest::newRow("longer") << 5000 << mode_t(0666);
    QTest::newRow("longer, may not be read") << 5000 << mode_t(0222);
}

void TestProjectFileInPlace::readOnlyFolderWritesItsFileInPlace()
{
    QFETCH(int, oldSize);
    QFETCH(mode_t, mode);
    putOldFile(QByteArray(oldSize, 'x'), mode);
    setMode(m_dir->path(), readOnly);
    {
        const NotRoot somebody;
        QVERIFY(saveProject(m_project.data()).ok());
    }
    setMode(file(), 0666);
    QCOMPARE(contents(file()), projectDocument(m_project.data()));
}

void TestProjectFileInPlace::readOnlyFolderTakesNoNewFile()
{
    setMode(m_dir->path(), readOnly);
    const NotRoot somebody;
    const SaveResult result = saveProject(m_project.data());
    QCOMPARE(result.failure, SaveResult::Failure::OpenFailed);
    QVERIFY(!result.errorString.isEmpty());
    QCOMPARE(files(), QStringList());
}

void TestProjectFileInPlace::stickyFolderWritesAFileOfSomebodyElseInPlace()
{
    putOldFile(QByteArray(5000, 'x'), 0666);
    setMode(m_dir->path(), sticky);
    const struct stat before = statOf(file());
    const NotRoot somebody;
    if (geteuid() == before.st_uid) {
        QSKIP("only root can make a file of somebody else");
    }
    QVERIFY(saveProject(m_project.data()).ok());
    QCOMPARE(contents(file()), projectDocument(m_project.data()));
    QCOMPARE(files(), QStringList("P.json"));
    // It is the same file still, so the folder did refuse to exchange it.
    QCOMPARE(statOf(file()).st_ino, before.st_ino);
    QCOMPARE(statOf(file()).st_uid, before.st_uid);
}

void TestProjectFileInPlace::readOnlyFileOfSomebodyElseIsRefused()
{
    putOldFile("kept", 0444);
    setMode(m_dir->path(), sticky);
    const struct stat before = statOf(file());
    const NotRoot somebody;
    if (geteuid() == before.st_uid) {
        QSKIP("only root can make a file of somebody else");
    }
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Could not open file for writing: \".+\"$"));
    const SaveResult result = saveProject(m_project.data());
    QCOMPARE(result.failure, SaveResult::Failure::OpenFailed);
    QVERIFY(!result.errorString.isEmpty());
    QCOMPARE(contents(file()), QByteArray("kept"));
    QCOMPARE(files(), QStringList("P.json"));
}

void TestProjectFileInPlace::fullDiskKeepsTheOldFile_data()
{
    QTest::addColumn<mode_t>("folderMode");
    QTest::addColumn<int>("oldSize");
    QTest::newRow("read-only folder, shorter than what fits") << readOnly << 1000;
    QTest::newRow("read-only folder, longer than what fits") << readOnly << 5000;
    QTest::newRow("sticky folder") << sticky << 1000;
}

void TestProjectFileInPlace::fullDiskKeepsTheOldFile()
{
    QFETCH(mode_t, folderMode);
    QFETCH(int, oldSize);
    m_project->setData(QString(6000, QLatin1Char('d')), projectDescriptionRole);
    putOldFile(QByteArray(oldSize, 'x'), 0666);
    setMode(m_dir->path(), folderMode);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Error writing to file: \".+\"$"));
    const auto result = [this]() {
        const NotRoot somebody;
        const FullDisk full(4096);
        return saveProject(m_project.data());
    }();
    QCOMPARE(result.failure, SaveResult::Failure::WriteFailed);
    QVERIFY(!result.errorString.isEmpty());
    QCOMPARE(contents(file()), QByteArray(oldSize, 'x'));
    QCOMPARE(files(), QStringList("P.json"));
}

void TestProjectFileInPlace::pipeThatNobodyReadsHoldsNothingUp()
{
    QCOMPARE(mkfifo(QFile::encodeName(file()).constData(), 0666), 0);
    setMode(file(), 0666);
    setMode(m_dir->path(), readOnly);
    const NotRoot somebody;
    QCOMPARE(saveProject(m_project.data()).failure, SaveResult::Failure::OpenFailed);
}

QTEST_GUILESS_MAIN(TestProjectFileInPlace)
#include "tst_projectfileinplace.moc"

#include "definitions/dlt645items.h"
#include "document/projectfile.h"
#include "document/projectreader.h"
#include "documenttest.h"
#include "files.h"
#include "hardships.h"
#include "tablerow.h"

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>

using Files::contents;
using Files::put;
using Hardships::FullDisk;

namespace {

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QString nestedArrays(int depth)
{
    return QString(depth, QLatin1Char('[')) + QString(depth, QLatin1Char(']'));
}

} // namespace

class TestProjectFile : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void samplesLoadAndSaveByteForByte_data();
    void samplesLoadAndSaveByteForByte();
    void savingReplacesTheFileAndLeavesNothingElse();
    void renamedProjectSavesBesideItsOldFile();
    void fileIsForItsOwnerAlone_data();
    void fileIsForItsOwnerAlone();
    void savedResultCarriesThePath();
    void longerOldFileLeavesNoRest();
    void linkIsWrittenThrough();
    void deviceIsWrittenInto();
    void pipeThatNobodyReadsHoldsNothingUp();
    void saveRefuses_data();
    void saveRefuses();
    void nameTooLongForAFileIsRefused();
    void nameWithSeparatorsGoesWhereItLeads();
    void fullDiskKeepsTheOldFile_data();
    void fullDiskKeepsTheOldFile();
    void readLogsNameAndDescription();
    void readRefusesWhatIsNoDocument_data();
    void readRefusesWhatIsNoDocument();
    void readRefusesWhatItCannotOpen_data();
    void readRefusesWhatItCannotOpen();
    void readTakesAnyObject_data();
    void readTakesAnyObject();
    void fiftyMegabytesAreRead();
    void hundredThousandPointsComeBackWhole();

private:
    QStandardItem *newProject(const QString &name, const QString &folder);
    QString path(const QString &name) const { return m_dir->filePath(name); }

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<QStandardItem> m_project;
};

void TestProjectFile::init()
{
    m_dir.reset(new QTemporaryDir(QDir::tempPath() + "/projectfile-XXXXXX"));
    QVERIFY(m_dir->isValid());
}

void TestProjectFile::cleanup()
{
    m_project.reset();
    m_dir.reset();
}

QStandardItem *TestProjectFile::newProject(const QString &name, const QString &folder)
{
    m_project.reset(ProjectTree::makeProject(name, folder, "D"));
    ProjectTree::appendMissingFolders(m_project.data());
    return m_project.data();
}

void TestProjectFile::samplesLoadAndSaveByteForByte_data()
{
    QTest::addColumn<QString>("sample");
    QTest::addColumn<QString>("saved");
    tableRow("empty", "empty", "Empty");
    tableRow("one slave", "one-slave", "P");
    tableRow("substation", "riverside-substation", "Riverside substation");
}

void TestProjectFile::samplesLoadAndSaveByteForByte()
{
    QFETCH(QString, sample);
    QFETCH(QString, saved);
    const QString source = QString(TEST_DATA_DIR "/%1.json").arg(sample);
    const std::optional<QJsonObject> document = readProjectFile(source);
    QVERIFY(document);
    QStandardItemModel model;
    QVERIFY(saveProject(loadProject(model, *document, m_dir->path())).ok());
    QCOMPARE(contents(m_dir->filePath(saved + ".json")), contents(source));
}

void TestProjectFile::savingReplacesTheFileAndLeavesNothingElse()
{
    QStandardItem *project = newProject("P", m_dir->path());
    const QString file = path("P.json");
    QTest::ignoreMessage(QtDebugMsg, qPrintable(QString("JSON data saved to file: \"%1\"").arg(file)));
    QVERIFY(saveProject(project).ok());
    QCOMPARE(contents(file), projectDocument(project));
    project->setData("changed", projectDescriptionRole);
    QVERIFY(saveProject(project).ok());
    QCOMPARE(contents(file), projectDocument(project));
    QVERIFY(contents(file).contains("changed"));
    QCOMPARE(filesIn(m_dir->path()), QStringList({"P.json"}));
}

void TestProjectFile::renamedProjectSavesBesideItsOldFile()
{
    QStandardItem *project = newProject("P", m_dir->path());
    QVERIFY(saveProject(project).ok());
    project->setText("变电站 Q");
    QVERIFY(saveProject(project).ok());
    QCOMPARE(filesIn(m_dir->path()), QStringList({"P.json", "变电站 Q.json"}));
    QVERIFY(contents(path("变电站 Q.json")).contains("\"name\": \"变电站 Q\""));
}

void TestProjectFile::fileIsForItsOwnerAlone_data()
{
    QTest::addColumn<int>("before"); // mode of the file that is there, or -1
    QTest::addColumn<int>("after");
    QTest::newRow("new") << -1 << 0600;
    QTest::newRow("read by all") << 0644 << 0644;
    QTest::newRow("written by a group") << 0664 << 0664;
    QTest::newRow("owner's alone") << 0600 << 0600;
}

void TestProjectFile::fileIsForItsOwnerAlone()
{
    QFETCH(int, before);
    QFETCH(int, after);
    const mode_t mask = umask(022); // what most systems begin with
    const auto restore = qScopeGuard([mask] { umask(mask); });
    const QByteArray file = QFile::encodeName(path("P.json"));
    if (before >= 0) {
        put(path("P.json"), "old");
        QCOMPARE(chmod(file.constData(), mode_t(before)), 0);
    }
    QVERIFY(saveProject(newProject("P", m_dir->path())).ok());
    struct stat saved = {};
    QCOMPARE(stat(file.constData(), &saved), 0);
    QCOMPARE(int(saved.st_mode & 07777), after);
    QCOMPARE(umask(022), mode_t(022)); // other files are made as before
}

void TestProjectFile::savedResultCarriesThePath()
{
    const SaveResult result = saveProject(newProject("P", m_dir->path()));
    QCOMPARE(result.path, path("P.json"));
    QCOMPARE(result.failure, SaveResult::Failure::None);
    QCOMPARE(result.errorString, QString());
}

void TestProjectFile::longerOldFileLeavesNoRest()
{
    put(path("P.json"), QByteArray(100000, 'x'));
    QVERIFY(saveProject(newProject("P", m_dir->path())).ok());
    QCOMPARE(contents(path("P.json")), projectDocument(m_project.data()));
}

void TestProjectFile::linkIsWrittenThrough()
{
    put(path("real.json"), "old");
    QVERIFY(QFile::link(path("real.json"), path("P.json")));
    QVERIFY(saveProject(newProject("P", m_dir->path())).ok());
    QVERIFY(QFileInfo(path("P.json")).isSymLink());
    QCOMPARE(contents(path("real.json")), projectDocument(m_project.data()));
}

void TestProjectFile::deviceIsWrittenInto()
{
    const QByteArray full = QFile::encodeName(path("full"));
    constexpr dev_t alwaysFull = 0x107; // as /dev/full
    if (mknod(full.constData(), S_IFCHR | 0600, alwaysFull) != 0) {
        QSKIP("a device can't be made here");
    }
    QVERIFY(QFile::link(path("full"), path("P.json")));
    QVERIFY(!saveProject(newProject("P", m_dir->path())).ok());
    struct stat now;
    QCOMPARE(stat(full.constData(), &now), 0);
    QVERIFY(S_ISCHR(now.st_mode));
}

void TestProjectFile::pipeThatNobodyReadsHoldsNothingUp()
{
    QCOMPARE(mkfifo(QFile::encodeName(path("P.json")).constData(), 0600), 0);
    QVERIFY(saveProject(newProject("P", m_dir->path())).ok());
    QCOMPARE(contents(path("P.json")), projectDocument(m_project.data()));
}

void TestProjectFile::saveRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("folder"); // below the test's own
    QTest::newRow("folder that is not there") << "P"
                                              << "/missing";
    QTest::newRow("folder that is a file") << "P"
                                           << "/file";
    QTest::newRow("directory in the file's place") << "taken" << QString();
    QTest::newRow("name with a separator") << "a/b" << QString();
}

void TestProjectFile::saveRefuses()
{
    QFETCH(QString, name);
    QFETCH(QString, folder);
    put(path("file"), "kept");
    QVERIFY(QDir(m_dir->path()).mkdir("taken.json"));
    const QStringList before = filesIn(m_dir->path());

    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Could not open file for writing: \".+\"$"));
    const SaveResult result = saveProject(newProject(name, m_dir->path() + folder));
    QCOMPARE(result.failure, SaveResult::Failure::OpenFailed);
    QVERIFY(!result.ok());
    QVERIFY(!result.errorString.isEmpty());
    QCOMPARE(result.path, m_dir->path() + folder + "/" + name + ".json");
    QCOMPARE(filesIn(m_dir->path()), before);
    QCOMPARE(contents(path("file")), QByteArray("kept"));
}

// Whether that shows at opening or at the end is up to the file system.
void TestProjectFile::nameTooLongForAFileIsRefused()
{
    const SaveResult result = saveProject(newProject(QString(300, QLatin1Char('n')), m_dir->path()));
    QVERIFY(!result.ok());
    QVERIFY(!result.errorString.isEmpty());
    QCOMPARE(filesIn(m_dir->path()), QStringList());
}

void TestProjectFile::nameWithSeparatorsGoesWhereItLeads()
{
    QVERIFY(QDir(m_dir->path()).mkpath("sub/deep"));
    QVERIFY(saveProject(newProject("deep/../../P", path("sub"))).ok());
    QCOMPARE(contents(path("P.json")), projectDocument(m_project.data()));
}

void TestProjectFile::fullDiskKeepsTheOldFile_data()
{
    QTest::addColumn<int>("descriptionSize");
    QTest::newRow("fails while writing") << 200000;
    QTest::newRow("fails at the end") << 6000;
}

void TestProjectFile::fullDiskKeepsTheOldFile()
{
    QFETCH(int, descriptionSize);
    QStandardItem *project = newProject("P", m_dir->path());
    QVERIFY(saveProject(project).ok());
    const QByteArray before = contents(path("P.json"));
    project->setData(QString(descriptionSize, QLatin1Char('d')), projectDescriptionRole);

    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Error writing to file: \".+\"$"));
    const auto result = [project]() {
        const FullDisk full(4096);
        return saveProject(project);
    }();
    QCOMPARE(result.failure, SaveResult::Failure::WriteFailed);
    QVERIFY(!result.errorString.isEmpty());
    QCOMPARE(contents(path("P.json")), before);
    QCOMPARE(filesIn(m_dir->path()), QStringList({"P.json"}));

    QVERIFY(saveProject(project).ok());
    QCOMPARE(contents(path("P.json")), projectDocument(project));
}

void TestProjectFile::readLogsNameAndDescription()
{
    put(path("x.json"), R"({"name": "变电站", "description": "two\nlines", "boxs": []})");
    QTest::ignoreMessage(QtDebugMsg, "Project Name: \"变电站\"");
    QTest::ignoreMessage(QtDebugMsg, "Project Description: \"two\\nlines\"");
    const std::optional<QJsonObject> document = readProjectFile(path("x.json"));
    QVERIFY(document);
    QCOMPARE(document->keys(), QStringList({"boxs", "description", "name"}));
}

void TestProjectFile::readRefusesWhatIsNoDocument_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blank") << QByteArray(" \n");
    QTest::newRow("not JSON") << QByteArray("[Project]\nname=P\n");
    QTest::newRow("array") << QByteArray(R"([{"name": "P"}])");
    QTest::newRow("text") << QByteArray("\"P\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("cut off") << QByteArray(R"({"name": "P", "standards": [{)");
    QTest::newRow("something behind") << QByteArray("{} {}");
    QTest::newRow("comma too many") << QByteArray(R"({"name": "P",})");
    QTest::newRow("NUL bytes") << QByteArray(64, '\0');
    QTest::newRow("not UTF-8") << QByteArray("{\"name\": \"\xff\xfe\"}");
    QTest::newRow("nested one level too deep")
        << QByteArray(R"({"standards": )") + nestedArrays(1024).toUtf8() + '}';
    QTest::newRow("nested arrays") << nestedArrays(100000).toUtf8();
    QTest::newRow("nested in a document")
        << QByteArray(R"({"standards": )") + nestedArrays(100000).toUtf8() + '}';
    QTest::newRow("nested objects") << QByteArray("{\"a\":").repeated(100000);
}

void TestProjectFile::readRefusesWhatIsNoDocument()
{
    QFETCH(QByteArray, bytes);
    put(path("x.json"), bytes);
    QTest::ignoreMessage(QtDebugMsg, "Failed to create valid JSON document");
    QVERIFY(!readProjectFile(path("x.json")));
}

void TestProjectFile::readRefusesWhatItCannotOpen_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing.json";
    QTest::newRow("directory") << ".";
    QTest::newRow("below a file") << "file/x.json";
}

void TestProjectFile::readRefusesWhatItCannotOpen()
{
    QFETCH(QString, name);
    put(path("file"), "{}");
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Could not open file for reading: \".+\"$"));
    QVERIFY(!readProjectFile(m_dir->filePath(name)));

    QTest::ignoreMessage(QtDebugMsg, "File path is empty.");
    QVERIFY(!readProjectFile(QString()));
}

void TestProjectFile::readTakesAnyObject_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty object") << QByteArray("{}");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf{}");
    QTest::newRow("line ends of Windows") << QByteArray("{\r\n}\r\n");
    QTest::newRow("one line") << QByteArray("{\"name\":\"\"}");
    QTest::newRow("nested as deep as may be")
        << QByteArray(R"({"standards": )") + nestedArrays(1023).toUtf8() + '}';
}

void TestProjectFile::readTakesAnyObject()
{
    QFETCH(QByteArray, bytes);
    put(path("x.json"), bytes);
    QTest::ignoreMessage(QtDebugMsg, "Project Name: \"\"");
    QVERIFY(readProjectFile(path("x.json")));
}

void TestProjectFile::fiftyMegabytesAreRead()
{
    QByteArray bytes = R"({"name": "P", "boxs": [{"name": "B0"})";
    for (int number = 1; bytes.size() < 50 * 1000 * 1000; ++number) {
        bytes += ",{\"name\": \"B" + QByteArray::number(number % 1000) + "\", \"ip\": \""
            + QByteArray(1000, 'i') + "\"}";
    }
    put(path("x.json"), bytes + "]}");
    bytes.clear();
    const std::optional<QJsonObject> document = readProjectFile(path("x.json"));
    QVERIFY(document);
    QStandardItemModel model;
    const QStandardItem *project = loadProject(model, *document, m_dir->path());
    QCOMPARE(project->child(2)->rowCount(), 1000);
}

void TestProjectFile::hundredThousandPointsComeBackWhole()
{
    QStandardItem *project = newProject("P", m_dir->path());
    GroupMap meters;
    GroupMap slaves;
    for (int group = 0; group < 5; ++group) {
        RowList slave{row({"standard", "1", "ABCD", "true", "false"})};
        RowList meter{row({"AA", "DLT645_2007"})};
        for (int point = 0; point < 10000; ++point) {
            const QString number = QString::number(point);
            slave.append(row({number, "n" + number, "float", "1", "r"}));
            const Dlt645::Item &item = Dlt645::items().at(size_t(point) % Dlt645::itemCount);
            meter.append(row({"true", Dlt645::label(item), "n" + number}));
        }
        slaves.insert(QString("Modbus-%1").arg(group + 1), slave);
        meters.insert(QString("DLT645-%1").arg(group + 1), meter);
    }
    QStandardItem *modbus = ProjectTree::appendDefinition(project->child(0), "M", QString());
    modbus->setData("Modbus", standardProtocolRole);
    modbus->setData(QVariant::fromValue(slaves), standardDatasRole);
    QStandardItem *dlt645 = ProjectTree::appendDefinition(project->child(0), "D", QString());
    dlt645->setData("DLT645", standardProtocolRole);
    dlt645->setData(QVariant::fromValue(meters), standardDatasRole);

    QVERIFY(saveProject(project).ok());
    QStandardItemModel model;
    const QStandardItem *back = loadProject(model, *readProjectFile(path("P.json")), m_dir->path());
    QCOMPARE(back->child(0)->child(0)->data(standardDatasRole).value<GroupMap>(), slaves);
    QCOMPARE(back->child(0)->child(1)->data(standardDatasRole).value<GroupMap>(), meters);
}

QTEST_GUILESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"

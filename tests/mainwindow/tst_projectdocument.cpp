#include "files.h"
#include "messages.h"
#include "modaldialogs.h"
#include "projectdump.h"
#include "windowundertest.h"

#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>

using Files::contents;

namespace {

// Collects the lines of the debug log while it lives.
class DebugLines
{
public:
    DebugLines()
        : m_before(qInstallMessageHandler(take))
    {
        lines().clear();
    }
    ~DebugLines() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY(DebugLines)

    QStringList taken() const { return lines(); }

private:
    static QStringList &lines()
    {
        static QStringList list;
        return list;
    }
    static void take(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        if (type == QtDebugMsg) {
            lines().append(text);
        }
    }

    const QtMessageHandler m_before;
};

struct Texts {
    QString dialogTitle;
    QString filter;
    QString saved; // "title|text" up to the path
    QString loaded;
};

const Texts english{"Open JSON File", "JSON Files (*.json)", "Save Successful|JSON data saved to file:\n",
                    "Load Successful|JSON data loaded from file:\n"};
const Texts chinese{"打开 JSON 文件", "JSON 文件 (*.json)", "保存成功|JSON 数据已保存到文件：\n",
                    "加载成功|已从文件加载 JSON 数据：\n"};

const char document[] = R"({"name": "P", "description": "D", "standards": [
    {"name": "D", "protocol": "DLT645", "datas": [{"slaveAddress": "AA", "protocolVersion": 1, "datas": [
        {"select": "true", "addr": "02010100", "dataType": "XXX.X", "name": "Ua"}]}]},
    {"name": "O", "protocol": "OpcUA", "extendedParameters": {"authentication": "0"}}],
    "services": [{"name": "IEC61850", "protocol": "IEC61850", "enableSSL": "false",
        "extendedParameters": {"authentication": "1", "password": "p"}}],
    "boxs": [{"name": "B", "ip": "10.0.0.1"}]})";

} // namespace

// The project document by the slots of the real window, under both catalogues of the program.
class TestProjectDocument : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void samplesComeBackByteForByte_data();
    void samplesComeBackByteForByte();
    void eachStepIsLoggedAndTold_data();
    void eachStepIsLoggedAndTold();
    void failuresAreLoggedAlone_data();
    void failuresAreLoggedAlone();
    void readerSlotsTakeTheWordsOfTheCatalogue();
    void otherLanguageCostsLabelsAndAuthenticationOfOpcUaAlone();
    void loadedBoxIsUnsetWhereTheDocumentSaysNothing();
    void currentItemIsSavedWhateverItIs();
    void loadingWorksAfterTheDocksHaveGone();

private:
    void speakChinese() { m_window->CESwitching(); }
    void load(const QString &path, QStringList *asked = nullptr);
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void put(const QString &name, const QByteArray &bytes) const { Files::put(path(name), bytes); }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<WindowUnderTest> m_window;
    QScopedPointer<Messages> m_messages;
};

void TestProjectDocument::init()
{
    QFile::remove("Settings.ini");
    m_folder.reset(new QTemporaryDir);
    m_window.reset(new WindowUnderTest);
    m_messages.reset(new Messages);
}

void TestProjectDocument::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    m_messages.reset();
    m_window.reset();
}

// Loads as the user does; an empty path cancels the dialog.
void TestProjectDocument::load(const QString &path, QStringList *asked)
{
    ModalDialogs dialogs;
    dialogs.expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        if (asked) {
            *asked = QStringList({dialog->windowTitle(), dialog->directory().absolutePath()})
                + dialog->nameFilters();
        }
        if (path.isEmpty()) {
            dialog->reject();
            return;
        }
        dialog->setDirectory(QFileInfo(path).absolutePath());
        dialog->selectFile(path);
        static_cast<QDialog *>(dialog)->accept();
    });
    m_window->loadJsonFile();
    QCOMPARE(dialogs.pending(), 0);
}

void TestProjectDocument::samplesComeBackByteForByte_data()
{
    QTest::addColumn<QString>("sample");
    QTest::addColumn<bool>("inChinese");
    for (const char *sample : {"empty", "one-slave", "riverside-substation"}) {
        QTest::addRow("%s in English", sample) << QString::fromLatin1(sample) << false;
        QTest::addRow("%s in Chinese", sample) << QString::fromLatin1(sample) << true;
    }
}

void TestProjectDocument::samplesComeBackByteForByte()
{
    QFETCH(QString, sample);
    QFETCH(bool, inChinese);
    if (inChinese) {
        speakChinese();
    }
    const QString source = QString(TEST_DATA_DIR "/%1.json").arg(sample);
    m_messages->expect();
    RUN(load(source));
    QStandardItem *project = m_window->findChild<QStandardItemModel *>()->item(0);
    QVERIFY(project);
    QCOMPARE(project->data(projectPathRole).toString(), QString(TEST_DATA_DIR));
    project->setData(m_folder->path(), projectPathRole);
    m_messages->expect();
    m_window->saveJsonFile(project);
    QCOMPARE(contents(m_folder->filePath(project->text() + ".json")), contents(source));
    QCOMPARE(QJsonDocument(m_window->buildProjectJson(project)).toJson(), contents(source));
}

void TestProjectDocument::eachStepIsLoggedAndTold_data()
{
    QTest::addColumn<bool>("inChinese");
    QTest::newRow("English") << false;
    QTest::newRow("Chinese") << true;
}

void TestProjectDocument::eachStepIsLoggedAndTold()
{
    QFETCH(bool, inChinese);
    const Texts &texts = inChinese ? chinese : english;
    if (inChinese) {
        speakChinese();
    }
    put("x.json", R"({"name": "P", "description": "two\nlines"})");
    QStringList asked;
    m_messages->expect();
    m_messages->expect();
    const DebugLines debug;
    RUN(load(path("x.json"), &asked));
    m_window->saveProjectAllFile();
    QCOMPARE(debug.taken(),
             QStringList({"Project Name: \"P\"", "Project Description: \"two\\nlines\"",
                          QString("JSON data saved to file: \"%1\"").arg(path("P.json"))}));
    QCOMPARE(asked, QStringList({texts.dialogTitle, QDir::homePath(), texts.filter}));
    QCOMPARE(m_messages->told(), QStringList({texts.loaded + path("x.json"), texts.saved + path("P.json")}));
}

void TestProjectDocument::failuresAreLoggedAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    const QString invalid = "Failed to create valid JSON document";
    QTest::newRow("cancelled") << QByteArray() << QString() << "File path is empty.";
    QTest::newRow("empty") << QByteArray() << "x.json" << invalid;
    QTest::newRow("array") << QByteArray("[{\"name\": \"P\"}]") << "x.json" << invalid;
    QTest::newRow("no JSON") << QByteArray("name=P") << "x.json" << invalid;
}

void TestProjectDocument::failuresAreLoggedAlone()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, file);
    QFETCH(QString, line);
    put("x.json", bytes);
    QStandardItem *project = m_window->addProject("P", path("missing"));
    const QStringList before = ProjectDump::tree(project);
    const DebugLines debug;
    RUN(load(file.isEmpty() ? file : m_folder->filePath(file)));
    QCOMPARE(debug.taken(), QStringList(line));
    m_window->saveJsonFile(project);
    m_window->saveJsonFile(nullptr);
    QCOMPARE(debug.taken().size(), 3);
    QVERIFY(debug.taken().at(1).startsWith("Could not open file for writing: \""));
    QCOMPARE(debug.taken().at(2), "No project selected.");
    QCOMPARE(m_messages->told(), QStringList());
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
    QCOMPARE(ProjectDump::tree(project), before);
}

void TestProjectDocument::readerSlotsTakeTheWordsOfTheCatalogue()
{
    const QJsonObject root = QJsonDocument::fromJson(document).object();
    const auto entry = [&root](const char *array, int place) {
        return root.value(QLatin1String(array)).toArray().at(place).toObject();
    };
    const auto words = [&] {
        QStandardItem meter;
        QStandardItem opcUa;
        QStandardItem service;
        m_window->transmitStandardDataToEditDialog(entry("standards", 0), &meter);
        m_window->transmitStandardDataToEditDialog(entry("standards", 1), &opcUa);
        m_window->transmitServiceDataToEditDialog(entry("services", 0), &service);
        const auto groups = meter.data(standardDatasRole).value<GroupMap>();
        return QStringList({groups.value("DLT645-1").value(1).value(1).toString(),
                            opcUa.data(standardAuthenticationRole).toString(),
                            service.data(serviceAuthenticationRole).toString()});
    };
    QCOMPARE(words(), QStringList({"A-phase voltage", "anonymous", "Password"}));
    speakChinese();
    // The pair "None" and "Password" shows its source text in each language.
    QCOMPARE(words(), QStringList({CMainWindow::tr("A-phase voltage"), "匿名", "Password"}));
    QVERIFY(CMainWindow::tr("A-phase voltage") != "A-phase voltage");
}

void TestProjectDocument::otherLanguageCostsLabelsAndAuthenticationOfOpcUaAlone()
{
    put("x.json", document);
    m_messages->expect();
    RUN(load(path("x.json")));
    QStandardItem *project = m_window->projectModel()->item(0);
    const QByteArray inEnglish = QJsonDocument(m_window->buildProjectJson(project)).toJson();
    QVERIFY(inEnglish.contains("\"password\": \"p\""));
    QByteArray expected = inEnglish;
    for (const char *line : {"                            \"addr\": \"02010100\",\n",
                             "                            \"dataType\": \"XXX.X\",\n",
                             "                \"authentication\": \"0\",\n"}) {
        QCOMPARE(expected.count(line), 1);
        expected.replace(line, "");
    }
    speakChinese();
    QCOMPARE(QJsonDocument(m_window->buildProjectJson(project)).toJson(), expected);
    m_window->CESwitching();
    QCOMPARE(QJsonDocument(m_window->buildProjectJson(project)).toJson(), inEnglish);
}

void TestProjectDocument::loadedBoxIsUnsetWhereTheDocumentSaysNothing()
{
    put("x.json", document);
    m_messages->expect();
    RUN(load(path("x.json")));
    const QStandardItem *project = m_window->projectModel()->item(0);
    const QStandardItem *box = project->child(2)->child(0);
    for (const int role : {boxModelRole, boxAt1Role, boxAt5Role, boxNtpServerRole, boxTimeRole}) {
        QVERIFY(!box->data(role).isValid());
    }
    QCOMPARE(box->data(boxLanIpRole), QVariant(QString())); // A missing key sets its role, to nothing.
    const QStandardItem *meter = project->child(0)->child(0);
    QCOMPARE(meter->data(standardModbusModeRole), QVariant(QString()));
    QCOMPARE(meter->data(standardPasswordRole), QVariant(QString()));
    QVERIFY(!meter->data(standardAuthenticationRole).isValid());
    QVERIFY(!meter->data(standardRtuCommunicationTimeoutRole).isValid());
    QVERIFY(!project->child(0)->child(1)->data(standardDatasRole).isValid());
}

void TestProjectDocument::currentItemIsSavedWhateverItIs()
{
    QStandardItem *project = m_window->addProject("P", m_folder->path());
    const DebugLines debug;
    m_window->projectTree()->setCurrentIndex(QModelIndex());
    m_window->saveProjectFile();
    QCOMPARE(debug.taken(), QStringList({"No project selected."}));
    m_messages->expect();
    m_window->select(project);
    m_window->saveProjectFile();
    // A Box keeps its model where a project keeps its folder, so a Box is saved there.
    QStandardItem *box = WindowUnderTest::addBox(project, "B", "10.0.0.1");
    box->setData(m_folder->path(), boxModelRole);
    m_messages->expect();
    m_window->select(box);
    m_window->saveProjectFile();
    QCOMPARE(m_messages->told(),
             QStringList({english.saved + path("P.json"), english.saved + path("B.json")}));
    QCOMPARE(contents(path("B.json")), QByteArray("{\n    \"description\": \"\",\n    \"name\": \"B\"\n}\n"));
}

void TestProjectDocument::loadingWorksAfterTheDocksHaveGone()
{
    put("x.json", document);
    m_window->dockManager()->deleteLater();
    WindowUnderTest::settle();
    QCOMPARE(m_window->projectTree(), nullptr);
    m_messages->expect();
    RUN(load(path("x.json")));
    QCOMPARE(ProjectDump::shape(m_window->projectModel()->item(0)),
             "P(Standard(D() O()) Service(IEC61850()) Box(B()) Data())");
    m_window->saveProjectFile(); // There is no current item.
}

QTEST_MAIN(TestProjectDocument)
#include "tst_projectdocument.moc"

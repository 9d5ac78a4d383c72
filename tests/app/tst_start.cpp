#include <QFile>
#include <QProcess>
#include <QTranslator>
#include <QtTest>

// The program itself, from outside, and what its resources hold.
class TestStart : public QObject
{
    Q_OBJECT

private slots:
    void runsWithoutAnyFileAndMissesNoResource();
    void resourcesComeWithTheLibrary_data();
    void resourcesComeWithTheLibrary();
    void anEmptyTranslationShowsTheSource_data();
    void anEmptyTranslationShowsTheSource();
};

void TestStart::runsWithoutAnyFileAndMissesNoResource()
{
    QProcess program;
    program.start(QString(PROGRAM), QStringList());
    QVERIFY(program.waitForStarted());
    QByteArray out;
    QTRY_VERIFY_WITH_TIMEOUT(!(out += program.readAllStandardOutput()).isEmpty(), 30000);
    QVERIFY2(out.startsWith("Debug: Message handler test ("), out);
    QVERIFY(!program.waitForFinished(1000));
    program.kill();
    program.waitForFinished();
    QCOMPARE((out + program.readAllStandardOutput()).count('\n'), 1);
    const QByteArray errors = program.readAllStandardError();
    QVERIFY2(!errors.contains("/adsdemo/") && !errors.contains("connectSlotsByName"), errors);
    QVERIFY2(!errors.contains("qUncompress"), errors);
    QVERIFY(!QFile::exists("Settings.ini"));
}

void TestStart::resourcesComeWithTheLibrary_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path :
         {"chinese.qm", "english.qm", "res/visual_studio_light.css", "images/logo-1.png"}) {
        QTest::newRow(path) << ":/adsdemo/" + QLatin1String(path);
    }
}

void TestStart::resourcesComeWithTheLibrary()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.size() > 0);
}

void TestStart::anEmptyTranslationShowsTheSource_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("shown");
    const QString chinese = ":/adsdemo/chinese.qm";
    const QString english = ":/adsdemo/english.qm";
    const QByteArray service("ServiceIEC61850EditDialog");
    const QByteArray window("MainWindow");
    QTest::newRow("None") << chinese << service << QByteArray("None") << "None";
    QTest::newRow("Password") << chinese << service << QByteArray("Password") << "Password";
    QTest::newRow("translated") << chinese << window << QByteArray("New Project") << "新建项目";
    QTest::newRow("English") << english << window << QByteArray("New Project") << "New Project";
}

void TestStart::anEmptyTranslationShowsTheSource()
{
    QFETCH(QString, catalogue);
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QTranslator translator;
    QVERIFY(translator.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QTEST(QCoreApplication::translate(context, source), "shown");
}

QTEST_GUILESS_MAIN(TestStart)
#include "tst_start.moc"

#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "run.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The layout file from one start of the program to the next. Docks are stored under names that count through
// a process, so each start is a process of its own: a copy of this program that is given what to do.
class TestLayoutFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aStoredLayoutIsThereAtTheNextStart();
    void anyDamagedFileGivesTheDefaultLayout_data();
    void anyDamagedFileGivesTheDefaultLayout();
    void anyTruncationStillStarts();
    void aFolderInTheFilesPlaceGivesTheDefaultLayout();
    void aFileThatMayNotBeWrittenIsReadAllTheSame();

private:
    // One start: what it reports, or "crashed".
    static QString start(const char *job);
    static QByteArray read();
    static void write(const QByteArray &content);

    QScopedPointer<QTemporaryDir> m_folder;
};

namespace {

const QString defaultLayout = "open open open 1280x720";
const QString storedLayout = "open open closed 1100x650";

QString report(const CMainWindow &window)
{
    QStringList result;
    const QList<QAction *> actions = window.viewMenu()->actions();
    for (const QAction *action : actions) {
        const auto *dock = qobject_cast<ads::CDockWidget *>(action->parent());
        result.append(QLatin1String(dock->isClosed() || dock->isFloating() ? "closed" : "open"));
    }
    result.append(QString("%1x%2").arg(window.width()).arg(window.height()));
    return result.join(QLatin1Char(' '));
}

int doJob(const QString &job)
{
    CMainWindow window;
    if (job == QLatin1String("store")) {
        window.show();
        window.move(40, 30);
        window.resize(1100, 650);
        qobject_cast<ads::CDockWidget *>(window.viewMenu()->actions().at(2)->parent())->closeDockWidget();
        window.on_actionSaveState_triggered(false);
    }
    QTextStream(stdout) << report(window);
    return 0;
}

} // namespace

void TestLayoutFile::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_folder->path()));
}

QString TestLayoutFile::start(const char *job)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QLatin1String(job)});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0) {
        return "crashed";
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

QByteArray TestLayoutFile::read()
{
    QFile file("Settings.ini");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestLayoutFile::write(const QByteArray &content)
{
    QFile file("Settings.ini");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void TestLayoutFile::aStoredLayoutIsThereAtTheNextStart()
{
    QCOMPARE(start("report"), defaultLayout);
    QVERIFY(!QFile::exists("Settings.ini"));
    QCOMPARE(start("store"), storedLayout);
    QCOMPARE(start("report"), storedLayout);
}

void TestLayoutFile::anyDamagedFileGivesTheDefaultLayout_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("noise") << QByteArray("\x00\xff[[[\x80=\n=\n%%%", 13);
    QTest::newRow("other keys") << QByteArray("[mainWindow]\nColour=blue\n");
    QTest::newRow("text instead of bytes")
        << QByteArray("[mainWindow]\nGeometry=wide\nState=open\nDockingState=all\n");
    QTest::newRow("cut docking state")
        << QByteArray("[mainWindow]\nDockingState=\"@ByteArray(\\0\\0\\b\\x9cx\\xda\\x8dUKs\\xdb)\"\n");
    QTest::newRow("damaged perspectives")
        << QByteArray("[Perspectives]\n1\\Name=Evening\n1\\State=none\nsize=many\n");
}

void TestLayoutFile::anyDamagedFileGivesTheDefaultLayout()
{
    QFETCH(QByteArray, content);
    RUN(write(content));
    QCOMPARE(start("report"), defaultLayout);
}

void TestLayoutFile::anyTruncationStillStarts()
{
    QCOMPARE(start("store"), storedLayout);
    const QByteArray whole = read();
    QVERIFY(whole.size() > 100);
    for (int part = 0; part < 10; ++part) {
        RUN(write(whole.left(whole.size() * part / 10)));
        const QString started = start("report");
        QVERIFY2(started.startsWith(QLatin1String("open open ")), qPrintable(started));
    }
}

void TestLayoutFile::aFolderInTheFilesPlaceGivesTheDefaultLayout()
{
    QVERIFY(QDir().mkdir("Settings.ini"));
    QCOMPARE(start("report"), defaultLayout);
    QCOMPARE(start("store"), storedLayout);
    QCOMPARE(start("report"), defaultLayout);
}

void TestLayoutFile::aFileThatMayNotBeWrittenIsReadAllTheSame()
{
    QCOMPARE(start("store"), storedLayout);
    QVERIFY(QFile::setPermissions("Settings.ini", QFile::ReadOwner));
    QCOMPARE(start("report"), storedLayout);
    QCOMPARE(start("store"), storedLayout);
}

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    const QString job = QCoreApplication::arguments().value(1);
    if (job == QLatin1String("report") || job == QLatin1String("store")) {
        return doJob(job);
    }
    TestLayoutFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_layoutfile.moc"

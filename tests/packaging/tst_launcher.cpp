#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

// The command that is installed: it enters a folder of the user's and starts the program there. A script that
// tells how it was started stands in for the program.
class TestLauncher : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void entersAFolderOfTheUsers_data();
    void entersAFolderOfTheUsers();
    void isFoundThroughALink();
    void handsOnArgumentsAndStatus();
    void folderThatCannotBeMadeIsTold();

private:
    struct Outcome {
        QByteArray output;
        QByteArray errors;
        int status = -1;
    };
    Outcome launch(const QString &command, const QStringList &arguments = {},
                   const QString &state = {}) const;
    QString path(const QString &name) const { return m_dir->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestLauncher::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QDir dir(m_dir->path());
    QVERIFY(dir.mkpath("usr/bin"));
    QVERIFY(dir.mkpath("usr/libexec/marlin-gate-70"));
    QVERIFY(dir.mkpath("home of one"));
    QVERIFY(QFile::copy(QString(LAUNCHER), path("usr/bin/marlin-gate-70")));
    QFile program(path("usr/libexec/marlin-gate-70/marlin-gate-70"));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\npwd\nfor a in \"$@\"; do echo \"<$a>\"; done\nexit 7\n");
    program.close();
    QVERIFY(program.setPermissions(program.permissions() | QFile::ExeOwner));
}

TestLauncher::Outcome TestLauncher::launch(const QString &command, const QStringList &arguments,
                                           const QString &state) const
{
    QProcessEnvironment environment;
    environment.insert("PATH", "/usr/bin:/bin");
    environment.insert("HOME", path("home of one"));
    if (!state.isEmpty()) {
        environment.insert("XDG_STATE_HOME", state);
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory("/");
    process.start(command, arguments, QIODevice::ReadOnly);
    process.waitForFinished();
    return {process.readAllStandardOutput(), process.readAllStandardError(), process.exitCode()};
}

void TestLauncher::entersAFolderOfTheUsers_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("folder");
    QTest::newRow("usual") << QString() << "home of one/.local/state/marlin-gate-70";
    QTest::newRow("told") << "else where"
                          << "else where/marlin-gate-70";
}

void TestLauncher::entersAFolderOfTheUsers()
{
    QFETCH(QString, state);
    QFETCH(QString, folder);
    const Outcome outcome = launch(path("usr/bin/marlin-gate-70"), {}, state.isEmpty() ? state : path(state));
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(QString::fromUtf8(outcome.output), path(folder) + QLatin1Char('\n'));
}

void TestLauncher::isFoundThroughALink()
{
    QVERIFY(QFile::link(path("usr/bin/marlin-gate-70"), path("link")));
    const Outcome outcome = launch(path("link"));
    QCOMPARE(outcome.errors, QByteArray());
    QVERIFY(outcome.output.endsWith("/.local/state/marlin-gate-70\n"));
}

void TestLauncher::handsOnArgumentsAndStatus()
{
    const Outcome outcome = launch(path("usr/bin/marlin-gate-70"), {"-style", "two words"});
    QVERIFY(outcome.output.endsWith("\n<-style>\n<two words>\n"));
    QCOMPARE(outcome.status, 7);
}

void TestLauncher::folderThatCannotBeMadeIsTold()
{
    QFile inTheWay(path("state"));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    const Outcome outcome = launch(path("usr/bin/marlin-gate-70"), {}, path("state"));
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.contains(QFile::encodeName(inTheWay.fileName())), outcome.errors.constData());
    QCOMPARE(outcome.status, 1);
}

QTEST_GUILESS_MAIN(TestLauncher)
#include "tst_launcher.moc"

#include "app/messagehandler.h"

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>

#include <cstdio>
#include <unistd.h>

// Each case runs this program again with a message type and a text: the copy leaves a word in the buffer of
// standard output, sends one message through the handler and ends without a flush of its own.
class TestMessageHandler : public QObject
{
    Q_OBJECT

private slots:
    void eachTypeHasItsStreamAndFormat_data();
    void eachTypeHasItsStreamAndFormat();
    void aFatalMessageAbortsWithoutFlush();
    void aContextWithoutNamesIsPrintedEmpty();
};

namespace {

struct Outcome {
    QByteArray out;
    QByteArray err;
    QProcess::ExitStatus status;
};

Outcome run(const QStringList &arguments)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished();
    return {process.readAllStandardOutput(), process.readAllStandardError(), process.exitStatus()};
}

} // namespace

void TestMessageHandler::eachTypeHasItsStreamAndFormat_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("debug") << int(QtDebugMsg)
                           << QByteArray("pending\nDebug: 25 °C (box.cpp:42, void poll(int))\n")
                           << QByteArray();
    QTest::newRow("info") << int(QtInfoMsg)
                          << QByteArray("pending\nInfo: 25 °C (box.cpp:42, void poll(int))\n")
                          << QByteArray();
    QTest::newRow("warning") << int(QtWarningMsg) << QByteArray("pending\n")
                             << QByteArray("Warning: 25 °C (box.cpp:42, void poll(int))\n");
    QTest::newRow("critical") << int(QtCriticalMsg) << QByteArray("pending\n")
                              << QByteArray("Critical: 25 °C (box.cpp:42, void poll(int))\n");
    QTest::newRow("unknown type") << 99 << QByteArray("pending\n") << QByteArray();
}

void TestMessageHandler::eachTypeHasItsStreamAndFormat()
{
    QFETCH(int, type);
    const Outcome outcome = run({QString::number(type), "25 °C"});
    QCOMPARE(outcome.status, QProcess::NormalExit);
    QTEST(outcome.out, "out");
    QTEST(outcome.err, "err");
}

void TestMessageHandler::aFatalMessageAbortsWithoutFlush()
{
    const Outcome outcome = run({QString::number(QtFatalMsg), "no memory"});
    QCOMPARE(outcome.status, QProcess::CrashExit);
    QCOMPARE(outcome.out, QByteArray());
    QCOMPARE(outcome.err, QByteArray("Fatal: no memory (box.cpp:42, void poll(int))\n"));
}

void TestMessageHandler::aContextWithoutNamesIsPrintedEmpty()
{
    const Outcome outcome = run({QString::number(QtWarningMsg), "no names", "without context"});
    QCOMPARE(outcome.err, QByteArray("Warning: no names (:0, )\n"));
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    bool isType = false;
    const int type = arguments.value(1).toInt(&isType);
    if (isType) {
        fputs("pending\n", stdout);
        const QMessageLogContext named("box.cpp", 42, "void poll(int)", "default");
        const QMessageLogContext nameless;
        messageHandler(static_cast<QtMsgType>(type), arguments.size() > 3 ? nameless : named,
                       arguments.value(2));
        _exit(0);
    }
    TestMessageHandler test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_messagehandler.moc"

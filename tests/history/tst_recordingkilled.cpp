#include "recordings.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <thread>

using namespace Recordings;

namespace {

// What a kill may take. Reports are counted, a ms each, since on a busy machine the child has no time to give
// or write any.
constexpr int mostLost = 1000;
constexpr int points = 20;

// What the child process does until it is killed: each ms a report, with the time at which it was handed
// over.
int recordForEver(const QString &path)
{
    Recorder recorder;
    recorder.start(file(path), {});
    for (;;) {
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        QVector<Reading> rows;
        for (int point = 0; point < points; ++point) {
            rows.append(reading(QString("U%1").arg(point), QString::number(now % 1000)));
        }
        recorder.add(report(now - start, rows));
        std::printf("%lld\n", static_cast<long long>(now));
        std::fflush(stdout);
        QThread::msleep(1);
    }
}

// The problems found in the file of a recorder that was killed after it had been given reports of these
// times.
QString problemsOf(const QString &path, const QVector<qint64> &given)
{
    const QStringList integrity = asked(path, "PRAGMA integrity_check");
    if (integrity != QStringList{"ok"}) {
        return integrity.join(' ');
    }
    if (given.size() < mostLost) {
        return {};
    }
    const QString kept = asked(path,
                               "SELECT min(time) || ' ' || max(time) || ' ' || (count(*) % 20) FROM sample "
                               "WHERE validity = 1")
                             .value(0);
    const QStringList parts = kept.split(' ');
    const qint64 end = parts.value(1).toLongLong();
    const auto lost = std::count_if(given.begin(), given.end(), [end](qint64 time) { return time > end; });
    const bool isAll =
        parts.value(0).toLongLong() == given.first() && lost <= mostLost && parts.value(2) == "0";
    return isAll ? QString()
                 : QString("%1 to %2 were given, there is %3").arg(given.first()).arg(given.last()).arg(kept);
}

// Records for that long, is killed, and gives what is wrong then.
QString kill(const QString &path, int ms)
{
    QProcess child;
    child.setStandardErrorFile(QProcess::nullDevice());
    child.start(QCoreApplication::applicationFilePath(), {"--record-for-ever", path});
    if (!child.waitForReadyRead(60000)) {
        return "It does not start.";
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
    child.kill();
    child.waitForFinished();
    const QList<QByteArray> lines = child.readAllStandardOutput().split('\n');
    QVector<qint64> given;
    for (int line = 0; line < lines.size() - 1; ++line) { // the last one may be cut off
        given.append(lines[line].toLongLong());
    }
    return problemsOf(path, given);
}

} // namespace

// The program is killed at any moment while it records: the file is good, and has all but the last second.
class TestRecordingKilled : public QObject
{
    Q_OBJECT
private slots:
    void fileIsAlwaysGood();
};

// Several at once, since each is mostly waited for.
void TestRecordingKilled::fileIsAlwaysGood()
{
    constexpr int kills = 100;
    constexpr int atOnce = 10;
    constexpr int longRuns = 15;
    const QTemporaryDir folder(folderTemplate());
    std::vector<QString> problems(kills);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < atOnce; ++thread) {
        threads.emplace_back([&problems, &folder, thread] {
            for (int round = thread; round < kills; round += atOnce) {
                // Most are short: around the opening and the first transactions. What is lost shows only
                // after more than a second.
                const int random = int(QRandomGenerator::global()->bounded(600U));
                const int ms = round < longRuns ? 1300 + 2 * random : random;
                problems[size_t(round)] = kill(folder.filePath(QString::number(round)), ms);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const QString &problem : problems) {
        QCOMPARE(problem, QString());
    }
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--record-for-ever") {
        return recordForEver(arguments.value(2));
    }
    TestRecordingKilled test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_recordingkilled.moc"

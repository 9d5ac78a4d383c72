#include "files.h"
#include "history/recordingcursor.h"
#include "history/recordingkeys.h"
#include "history/recordingreader.h"
#include "recordings.h"

#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUrlQuery>

#include <csignal>
#include <unistd.h>

using namespace Recordings;

namespace {

const QString password = "it's 'secret' \\ : / @ %";

// A PostgreSQL of the test's own, in a folder of its own; ends with it.
class Server
{
public:
    ~Server() { stop(); }

    // Why there is none; empty once it is made.
    QString make();
    QString start();
    void stop();
    RecordingTarget target(const QString &withPassword = password) const;

private:
    static QString programs();
    QStringList asOwner(const QStringList &command) const;

    QTemporaryDir m_folder;
    QProcess m_process;
};

// Debian keeps them out of the path.
QString Server::programs()
{
    const QDir versions("/usr/lib/postgresql");
    const QStringList found =
        versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QString &version : found) {
        if (QFile::exists(versions.filePath(version + "/bin/initdb"))) {
            return versions.filePath(version + "/bin/");
        }
    }
    return {};
}

// PostgreSQL refuses to run as root.
QStringList Server::asOwner(const QStringList &command) const
{
    return geteuid() == 0
        ? QStringList{"setpriv", "--reuid=postgres", "--regid=postgres", "--clear-groups"} + command
        : command;
}

QString Server::make()
{
    if (!RecordingTarget::available().contains(RecordingTarget::Kind::Server)) {
        return "Qt's driver for PostgreSQL is not installed.";
    }
    if (programs().isEmpty()) {
        return "PostgreSQL is not installed.";
    }
    Files::put(m_folder.filePath("password"), password.toUtf8());
    if (geteuid() == 0 && QProcess::execute("chown", {"-R", "postgres", m_folder.path()}) != 0) {
        return "There is no user for it.";
    }
    QStringList command = asOwner(
        {programs() + "initdb", "--no-sync", "--encoding=UTF8", "--locale=C", "--auth=scram-sha-256",
         "--username=anna", "--pwfile=" + m_folder.filePath("password"), "-D", m_folder.filePath("data")});
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.start(command.takeFirst(), command);
    process.waitForFinished();
    return process.exitCode() == 0 ? start() : QString::fromUtf8(process.readAllStandardError());
}

QString Server::start()
{
    QStringList command =
        asOwner({programs() + "postgres", "-D", m_folder.filePath("data"), "-c", "listen_addresses=", "-c",
                 "unix_socket_directories=" + m_folder.path(), "-c", "fsync=off"});
    m_process.setWorkingDirectory(m_folder.path());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(command.takeFirst(), command);
    QByteArray said;
    while (!said.contains("ready to accept connections")) {
        if (!m_process.waitForReadyRead(20000)) {
            return QString::fromUtf8(said);
        }
        said += m_process.readAll();
    }
    return {};
}

void Server::stop()
{
    if (m_process.state() != QProcess::NotRunning) {
        ::kill(pid_t(m_process.processId()), SIGINT); // clients or not
        m_process.waitForFinished();
    }
}

RecordingTarget Server::target(const QString &withPassword) const
{
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(withPassword));
    QString error;
    const RecordingTarget target = RecordingTarget::fromText(
        QString("postgresql://anna:%1@/postgres?host=%2").arg(encoded, m_folder.path()), &error);
    return error.isEmpty() ? target : RecordingTarget();
}

// The first column of what it answers, or why it fails.
QStringList ran(const RecordingTarget &server, const QString &name, const QStringList &statements)
{
    QStringList answers;
    {
        QSqlDatabase base = QSqlDatabase::addDatabase("QPSQL", "other");
        base.setUserName("anna");
        base.setPassword(password);
        base.setDatabaseName(name);
        base.setConnectOptions("host=" + QUrlQuery(server.server).queryItemValue("host"));
        base.open();
        for (const QString &statement : statements) {
            QSqlQuery query(base);
            if (!query.exec(statement)) {
                answers.append(query.lastError().text());
            }
            while (query.next()) {
                answers.append(query.value(0).toString());
            }
        }
    }
    QSqlDatabase::removeDatabase("other");
    return answers;
}

} // namespace

// A recording in PostgreSQL.
class TestRecordingServer : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void recordsAndReads();
    void namesBoxesWhereItMay();
    void wrongPasswordIsTold();
    void otherTablesAreLeftAlone();
    void longNamesAreKept();
    void findsNamesByIndex();
    void preparesALookUpOnce();
    void optionsAreQuoted();
    void serverGoesAwayAndComesBack();

private:
    QString walk(const QString &name) const;

    Server m_server;
};

void TestRecordingServer::initTestCase()
{
    registerAnswers();
    const QString why = m_server.make();
    if (!why.isEmpty()) {
        QSKIP(qPrintable(why));
    }
}

// The numbers and texts of a point, as a reader gives them.
QString TestRecordingServer::walk(const QString &name) const
{
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    QSignalSpy failed(&reader, &RecordingReader::failed);
    reader.open(m_server.target());
    if (!QTest::qWaitFor([&] { return !opened.isEmpty() || !failed.isEmpty(); }, 10000) || opened.isEmpty()) {
        return "failed: " + failed.value(0).value(0).toString();
    }
    const auto cursor = reader.cursor(id(name), reader.extent(id(name)));
    QStringList found;
    Sample sample;
    while (cursor->next(&sample)) {
        found.append(
            QString("%1%2:%3").arg(sample.number, 0, 'g', 17).arg(sample.text).arg(int(sample.state)));
    }
    return found.join(' ') + cursor->error();
}

void TestRecordingServer::recordsAndReads()
{
    const QString name = QString::fromUtf8("it's \"电压\" ?1 \\");
    QVector<Readings> reports;
    for (int time = 0; time < 200; ++time) { // enough for rows by the dozen
        reports.append(report(time * 1000, {reading("many", QString::number(time / 7.0, 'g', 17))}));
    }
    reports.append(
        report(300000, {reading(name, "0.1"), reading("event", "it's\\'?"), reading("none", "nan")}));
    reports.append(report(301000,
                          {reading(name, "9007199254740993", "int64"), reading("event", "", "string"),
                           reading("none", QString::fromLatin1("a\0b", 3), "string")}));
    QCOMPARE(record(m_server.target(), reports).error, QString());
    QCOMPARE(walk(name),
             QString("0.10000000000000001:1 9007199254740992"
                     "9007199254740993:1 nan:4"));
    QCOMPARE(walk("event"), QString("nanit's\\'?:2 nan:1 nan:4"));
    QCOMPARE(walk("none"), QString::fromUtf8("nannan:2 nana\uFFFDb:1 nan:4"));
    QCOMPARE(walk("many").section(' ', 0, 1), QString("0:1 0.14285714285714285:1"));
    QCOMPARE(walk("many").count(' '), 200); // and the gap

    // Another recording is told apart from this one.
    QCOMPARE(record(m_server.target(), {report(400000, {reading(name, "1")})}).error, QString());
    QCOMPARE(walk(name).section(' ', 2), QString("nan:4 1:1 nan:4 nan:4"));
}

// One who may not goes on without.
void TestRecordingServer::namesBoxesWhereItMay()
{
    const QString name = QString::fromUtf8("it's \"北\" ?1 \\");
    Readings given = report(500000, {reading("named", "1")});
    const auto names = [this] {
        return ran(m_server.target(), "postgres",
                   {"SELECT value FROM recording_info WHERE key = 'box 192.168.1.80 plant'"});
    };
    for (const QString &each : {QString("North"), name}) {
        given.boxName = each;
        QCOMPARE(record(m_server.target(), {given}).error, QString());
        QCOMPARE(names(), QStringList{each});
    }
    QCOMPARE(
        ran(m_server.target(), "postgres",
            {"CREATE ROLE bob LOGIN PASSWORD 'bob'", "GRANT SELECT ON ALL TABLES IN SCHEMA public TO bob",
             "GRANT INSERT, UPDATE ON recording, point, sample TO bob",
             "GRANT USAGE ON ALL SEQUENCES IN SCHEMA public TO bob"}),
        QStringList());
    RecordingTarget target = m_server.target();
    target.server.setUserName("bob");
    target.server.setPassword("bob");
    given.boxName = "South";
    given.time += 1000;
    const Recorder::Status status = record(target, {given});
    QCOMPARE(status.error, QString());
    QCOMPARE(status.samples, qint64(3)); // with the breaks around it
    QCOMPARE(names(), QStringList{name});
}

void TestRecordingServer::wrongPasswordIsTold()
{
    const QString error = record(m_server.target("wrong"), {}).error;
    QVERIFY2(error.contains("can't be reached. (") && error.contains("password authentication failed"),
             qPrintable(error));
    QVERIFY2(!error.contains("wrong"), qPrintable(error));
}

void TestRecordingServer::otherTablesAreLeftAlone()
{
    RecordingTarget other = m_server.target();
    other.server.setPath("/template1");
    QCOMPARE(ran(other, "template1", {"CREATE TABLE sample (jar TEXT)"}), QStringList());
    const QString error = record(other, {report(0, {reading("U", "1")})}).error;
    QVERIFY2(error.contains(" is no recording."), qPrintable(error));
}

void TestRecordingServer::longNamesAreKept()
{
    // Such as can't be made shorter.
    QString name;
    while (name.size() < 20000) {
        name += QString::number(QRandomGenerator::global()->generate(), 36);
    }
    for (const int time : {0, 1000}) {
        QCOMPARE(record(m_server.target(), {report(time, {reading("short", "1"), reading(name, "2")})}).error,
                 QString());
    }
    QCOMPARE(walk("short").left(11), QString("1:1 nan:4 1"));
    QCOMPARE(walk(name).left(11), QString("2:1 nan:4 2"));
}

void TestRecordingServer::findsNamesByIndex()
{
    record(m_server.target(), {});
    const QString sql = RecordingKeys::statement(RecordingTarget::Kind::Server).replace('?', "'a'");
    // So few points it would read whole.
    const QString plan =
        ran(m_server.target(), "postgres", {"SET enable_seqscan = off", "EXPLAIN " + sql}).join('\n');
    QVERIFY2(plan.contains("point_form"), qPrintable(plan));
    QVERIFY2(plan.contains("Index Cond: ((md5(box)") && plan.contains("(md5(name) ="), qPrintable(plan));
}

// Else each moment of the pointer would take three answers of the server for each curve.
void TestRecordingServer::preparesALookUpOnce()
{
    record(m_server.target(), {});
    RecordingDatabase database(m_server.target());
    QVERIFY2(database.open(RecordingDatabase::Access::Read), qPrintable(database.error()));
    Sample sample;
    bool found = false;
    for (const qint64 time : {start, start + 1000, start + 2000}) {
        QVERIFY(readNeighbour(&database, {1, 2, 3}, Neighbour::Before, time, &sample, &found));
    }
    QVariant count;
    QVERIFY(database.readCell("SELECT count(*) FROM pg_prepared_statements WHERE statement LIKE '%DESC%' "
                              "AND statement NOT LIKE '%prepared%'",
                              &count));
    QCOMPARE(count.toInt(), 1);
}

void TestRecordingServer::optionsAreQuoted()
{
    RecordingTarget target = m_server.target();
    target.server.setQuery(target.server.query() + "&application_name=it's%20\\ plant");
    QCOMPARE(record(target, {}).error, QString());
}

void TestRecordingServer::serverGoesAwayAndComesBack()
{
    Recorder recorder;
    recorder.setLimits(quick());
    recorder.start(m_server.target(), {});
    recorder.add(report(1000000, {reading("night", "1")}));
    QTRY_COMPARE(recorder.status().samples, qint64(1));
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    QSignalSpy failed(&reader, &RecordingReader::failed);
    reader.setPollInterval(30);
    reader.open(m_server.target());
    QVERIFY(opened.wait());
    QSignalSpy thinned(&reader, &RecordingReader::thinned);
    m_server.stop();
    reader.request(this, {{id("night")}, {start + 1000000, start + 1002000}, 10});
    recorder.add(report(1001000, {reading("night", "2")}));
    QTRY_COMPARE(recorder.status().state, Recorder::State::Troubled);
    QTRY_VERIFY(recorder.status().error.contains("can't be reached."));
    QTRY_COMPARE(failed.size(), 1);
    QVERIFY(failed.first().first().toString().contains("can't be reached."));
    QCOMPARE(m_server.start(), QString());
    QTRY_COMPARE(recorder.status().samples, qint64(2));
    QCOMPARE(recorder.status().bytes, qint64(-1));
    QTRY_COMPARE(reader.extent(id("night")).to, start + 1001000);
    QTRY_COMPARE(thinned.size(), 1);
    QCOMPARE(failed.size(), 1);
    QVERIFY(stopAndWait(&recorder));
    QCOMPARE(walk("night"), QString("1:1 2:1 nan:4"));
}

QTEST_GUILESS_MAIN(TestRecordingServer)
#include "tst_recordingserver.moc"

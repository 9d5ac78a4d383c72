#include "log/activitylog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

// The log lies beside the executable, so each case runs a copy of this program in a folder of its own; given
// arguments, the copy logs each of them and ends; "latin1" has it log full-width characters under that codec.
class TestActivityLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aLineHasDateTimeAndMessage();
    void laterRunsAppend();
    void fullWidthCharactersAreKept_data();
    void fullWidthCharactersAreKept();
    void aLogThatCannotBeOpenedIsSkipped();

private:
    int log(const QStringList &messages) const;
    QStringList lines() const;

    QScopedPointer<QTemporaryDir> m_folder;
};

void TestActivityLog::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), m_folder->filePath("program")));
}

int TestActivityLog::log(const QStringList &messages) const
{
    return QProcess::execute(m_folder->filePath("program"), messages);
}

QStringList TestActivityLog::lines() const
{
    QFile file(m_folder->filePath("MARLINLOG.log"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))
                                          : QStringList();
}

void TestActivityLog::aLineHasDateTimeAndMessage()
{
    const QDateTime before = QDateTime::currentDateTime().addMSecs(-1000);
    QCOMPARE(log({"BoxEditDialog: save"}), 0);
    const QDateTime after = QDateTime::currentDateTime();

    const QStringList written = lines();
    QCOMPARE(written.size(), 2);
    QCOMPARE(written.at(1), QString());
    QCOMPARE(written.at(0).mid(19), ": BoxEditDialog: save");
    const auto time = QDateTime::fromString(written.at(0).left(19), "yyyy-MM-dd HH:mm:ss");
    QVERIFY2(time.isValid() && before <= time && time <= after, qPrintable(written.at(0)));
}

void TestActivityLog::laterRunsAppend()
{
    QCOMPARE(log({"NewProjectDialog: new-nuilt", "NewProjectDialog: destroyed"}), 0);
    QCOMPARE(log({"BoxSearchDialog new-nuilt"}), 0);
    QStringList messages;
    const QStringList written = lines();
    for (const QString &line : written) {
        messages.append(line.mid(21));
    }
    QCOMPARE(messages,
             QStringList({"NewProjectDialog: new-nuilt", "NewProjectDialog: destroyed",
                          "BoxSearchDialog new-nuilt", QString()}));
}

void TestActivityLog::fullWidthCharactersAreKept_data()
{
    QTest::addColumn<QString>("message"); // that the copy logs
    QTest::newRow("in a locale of UTF-8") << "EditProjectDialog：save";
    QTest::newRow("in another") << "latin1";
}

void TestActivityLog::fullWidthCharactersAreKept()
{
    QFETCH(QString, message);
    QCOMPARE(log({message}), 0);
    QCOMPARE(lines().value(0).mid(21), "EditProjectDialog：save");
}

void TestActivityLog::aLogThatCannotBeOpenedIsSkipped()
{
    QVERIFY(QDir(m_folder->path()).mkdir("MARLINLOG.log"));
    QCOMPARE(log({"BoxEditDialog: save"}), 0);
    QCOMPARE(lines(), QStringList());
}

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList messages = QCoreApplication::arguments().mid(1);
    if (!messages.isEmpty() && !messages.first().startsWith(QLatin1Char('-'))) {
        for (QString message : messages) {
            if (message == QLatin1String("latin1")) {
                QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
                message = "EditProjectDialog：save";
            }
            logToFile(message);
        }
        return 0;
    }
    TestActivityLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_activitylog.moc"

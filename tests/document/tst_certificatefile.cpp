#include "document/certificatefile.h"

#include "files.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

// What a certificate file becomes in the project.
class TestCertificateFile : public QObject
{
    Q_OBJECT
private slots:
    void contentFollowsTheEnding_data();
    void contentFollowsTheEnding();
    void fileThatCannotBeOpenedSaysSo_data();
    void fileThatCannotBeOpenedSaysSo();
    void fileWithoutPermissionSaysSo();
    void fileThatFailsToBeReadHasNoContent();
    void certificatesOfOpensslAreCarriedWhole();
    void hundredMegabytesAreRead();
};

void TestCertificateFile::contentFollowsTheEnding_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("content");
    QTest::newRow("der") << "a.der" << QByteArray("\x30\x82") << "MII=";
    QTest::newRow("pem, trailing line feed cut") << "a.pem" << QByteArray("-----X-----\n") << "-----X-----";
    QTest::newRow("crt") << "a.crt" << QByteArray("  text\r\n") << "text";
    QTest::newRow("key") << "a.key" << QByteArray("key") << "key";
    QTest::newRow("UTF-8") << "u.pem" << QByteArray("\xE8\xAF\x81\n") << "证";
    QTest::newRow("not UTF-8") << "n.pem" << QByteArray("a\xFF\n") << "a\uFFFD";
    QTest::newRow("capitals have no content") << "KEY.PEM" << QByteArray("text") << QString();
    QTest::newRow("capital DER") << "A.DER" << QByteArray("text") << QString();
    QTest::newRow("other ending") << "a.txt" << QByteArray("text") << QString();
    QTest::newRow("no ending") << "pem" << QByteArray("text") << QString();
    QTest::newRow("empty file") << "e.pem" << QByteArray() << QString();
}

void TestCertificateFile::contentFollowsTheEnding()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, content);
    const CertificateFile file = loadCertificateFile(Files::put(name, bytes));
    QVERIFY(file.opened);
    QCOMPARE(file.content, content);
}

void TestCertificateFile::fileThatCannotBeOpenedSaysSo_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << "missing.pem";
    QTest::newRow("below a file") << Files::put("plain", "x") + "/a.pem";
    QDir().mkdir("folder.pem");
    QTest::newRow("a folder") << "folder.pem";
}

void TestCertificateFile::fileThatCannotBeOpenedSaysSo()
{
    QFETCH(QString, path);
    const CertificateFile file = loadCertificateFile(path);
    QVERIFY(!file.opened);
    QCOMPARE(file.content, QString());
}

void TestCertificateFile::fileWithoutPermissionSaysSo()
{
    const QString path = Files::put("secret.pem", "x");
    QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions()));
    if (QFile(path).open(QIODevice::ReadOnly)) {
        QSKIP("this user reads files without permission");
    }
    const CertificateFile file = loadCertificateFile(path);
    QVERIFY(!file.opened);
    QCOMPARE(file.content, QString());
}

void TestCertificateFile::fileThatFailsToBeReadHasNoContent()
{
    // Opens for anyone's own process, and refuses to be read at its start.
    const QString memory = "/proc/self/mem";
    if (!QFile::exists(memory) || !QFile::link(memory, "memory.pem")) {
        QSKIP("no such file here");
    }
    QCOMPARE(loadCertificateFile("memory.pem").content, QString());
}

void TestCertificateFile::certificatesOfOpensslAreCarriedWhole()
{
    const QString openssl = QStandardPaths::findExecutable("openssl");
    if (openssl.isEmpty()) {
        QSKIP("openssl is not installed");
    }
    const auto run = [&openssl](const QString &arguments) {
        return QProcess::execute(openssl, arguments.split(QLatin1Char(' '))) == 0;
    };
    QVERIFY(run("req -x509 -newkey rsa:2048 -nodes -keyout s.key -out s.pem -days 2 -subj /CN=box"));
    QVERIFY(run("x509 -in s.pem -outform DER -out s.der"));
    QCOMPARE(loadCertificateFile("s.pem").content.toUtf8() + '\n', Files::contents("s.pem"));
    QCOMPARE(loadCertificateFile("s.key").content.toUtf8() + '\n', Files::contents("s.key"));
    QCOMPARE(QByteArray::fromBase64(loadCertificateFile("s.der").content.toLatin1()),
             Files::contents("s.der"));
}

void TestCertificateFile::hundredMegabytesAreRead()
{
    QFile file("big.pem");
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray megabyte(1024 * 1024, 'A');
    for (int written = 0; written < 100; ++written) {
        QCOMPARE(file.write(megabyte), qint64(megabyte.size()));
    }
    file.close();
    QCOMPARE(loadCertificateFile(file.fileName()).content.size(), 100 * 1024 * 1024);
    QVERIFY(file.remove());
}

QTEST_GUILESS_MAIN(TestCertificateFile)
#include "tst_certificatefile.moc"

#include "document/certificatecheck.h"
#include "document/certificatefile.h"
#include "document/projectcheck.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using CertificateCheck::Fit;

// Certificates and keys as openssl makes them, in the forms that are in use.
class TestCertificateCheck : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void keyFits_data();
    void keyFits();
    void serviceIsChecked_data();
    void serviceIsChecked();

private:
    void run(const char *arguments);
    QString content(const QString &file) const { return loadCertificateFile(m_dir.filePath(file)).content; }
    QJsonObject project(const QString &root, const QString &server, const QString &key,
                        const QString &client) const;

    QTemporaryDir m_dir;
    QString m_openssl;
};

void TestCertificateCheck::run(const char *arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_dir.path());
    process.start(m_openssl, QString::fromLatin1(arguments).split(' '));
    QVERIFY(process.waitForFinished());
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError());
}

void TestCertificateCheck::initTestCase()
{
    m_openssl = QStandardPaths::findExecutable("openssl");
    if (m_openssl.isEmpty()) {
        QSKIP("openssl is not installed");
    }
    if (!CertificateCheck::isPossible()) {
        QSKIP("Qt has no SSL library");
    }
    for (const char *arguments :
         {"req -x509 -newkey rsa:2048 -nodes -keyout rsa.key -out rsa.pem -days 10 -subj /CN=rsa",
          "x509 -in rsa.pem -outform DER -out rsa.der", "rsa -in rsa.key -traditional -out rsa1.key",
          "rsa -in rsa.key -traditional -outform DER -out rsa1.der",
          "pkcs8 -topk8 -nocrypt -in rsa.key -outform DER -out rsa8.der",
          "pkcs8 -topk8 -in rsa.key -passout pass:secret -out rsalocked.key",
          "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout ec.key -out ec.pem "
          "-days 10 "
          "-subj /CN=ec",
          "ec -in ec.key -out ec1.key", "ec -in ec.key -outform DER -out ec1.der",
          "ec -in ec.key -no_public -out ecbare.key", "ec -in ec.key -no_public -outform DER -out ecbare.der",
          "ec -in ec.key -conv_form compressed -out ecshort.key",
          "pkcs8 -topk8 -nocrypt -in ecbare.key -out ecbare8.key",
          "ecparam -name secp384r1 -genkey -out other.key", "ecparam -name prime256v1 -genkey -out alike.key",
          "req -x509 -newkey ed25519 -nodes -keyout ed.key -out ed.pem -days 10 -subj /CN=ed"}) {
        run(arguments);
    }
}

void TestCertificateCheck::keyFits_data()
{
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("expected");
    const auto row = [](const char *certificate, const char *key, const char *password, Fit expected) {
        QTest::addRow("%s with %s, '%s'", certificate, key, password)
            << QString::fromLatin1(certificate) << QString::fromLatin1(key) << QString::fromLatin1(password)
            << int(expected);
    };
    row("rsa.pem", "rsa.key", "", Fit::Fits);
    row("rsa.der", "rsa.key", "", Fit::Fits);
    row("rsa.pem", "rsa1.key", "", Fit::Fits);
    row("rsa.pem", "rsa1.der", "", Fit::Fits);
    row("rsa.pem", "rsa8.der", "", Fit::Fits);
    row("rsa.pem", "rsa.key", "not needed", Fit::Fits);
    row("rsa.pem", "rsalocked.key", "secret", Fit::Fits);
    row("rsa.pem", "rsalocked.key", "wrong", Fit::Unreadable);
    row("rsa.pem", "rsalocked.key", "", Fit::Unreadable);
    row("ec.pem", "ec.key", "", Fit::Fits);
    row("ec.pem", "ec1.key", "", Fit::Fits);
    row("ec.pem", "ec1.der", "", Fit::Fits);
    row("ec.pem", "ecshort.key", "", Fit::Fits);
    row("ec.pem", "ecbare.key", "", Fit::Unknown);
    row("ec.pem", "ecbare.der", "", Fit::Unknown);
    row("ec.pem", "ecbare8.key", "", Fit::Unknown);
    row("ec.pem", "other.key", "", Fit::Different);
    row("ec.pem", "alike.key", "", Fit::Different);
    row("ec.pem", "rsa.key", "", Fit::Different);
    row("rsa.pem", "ec.key", "", Fit::Different);
    row("rsa.pem", "rsa.pem", "", Fit::Unreadable);
    row("rsa.pem", "rsa.der", "", Fit::Unreadable);
    row("ed.pem", "ed.key", "", Fit::Unknown);
}

void TestCertificateCheck::keyFits()
{
    QFETCH(QString, certificate);
    QFETCH(QString, key);
    QFETCH(QString, password);
    QFETCH(int, expected);
    const QList<QSslCertificate> certificates = CertificateCheck::certificatesIn(content(certificate));
    QCOMPARE(certificates.size(), 1);
    QCOMPARE(int(CertificateCheck::fit(certificates.first(), content(key), password)), expected);
}

QJsonObject TestCertificateCheck::project(const QString &root, const QString &server, const QString &key,
                                          const QString &client) const
{
    const QJsonObject extended{{"rootCertificate", content(root)},
                               {"rootCertificatePath", root},
                               {"serverCertificate", content(server)},
                               {"serverCertificatePath", server},
                               {"serverKey", content(key)},
                               {"serverKeyPath", key},
                               {"serverKeyPassword", "secret"},
                               {"clientCertificate3", content(client)},
                               {"clientCertificatePath3", client}};
    const QJsonObject service{{"name", "S"},
                              {"protocol", "IEC61850"},
                              {"port", "102"},
                              {"enableSSL", "true"},
                              {"isVerifyClientCert", client.isEmpty() ? "false" : "true"},
                              {"extendedParameters", extended}};
    return {{"name", "P"}, {"services", QJsonArray{service}}};
}

void TestCertificateCheck::serviceIsChecked_data()
{
    QTest::addColumn<QStringList>("files"); // root, server, key, client
    QTest::addColumn<int>("days");          // from today
    QTest::addColumn<QStringList>("expected");
    const QDateTime made = QDateTime::currentDateTime();
    const QString last = made.addDays(10).date().toString(Qt::ISODate);
    const QString first = made.date().toString(Qt::ISODate);
    QTest::newRow("good") << QStringList{"rsa.pem", "ec.pem", "ec.key", "rsa.der"} << 1 << QStringList();
    QTest::newRow("good, with a password")
        << QStringList{"rsa.pem", "rsa.pem", "rsalocked.key", ""} << 1 << QStringList();
    QTest::newRow("all missing") << QStringList{"", "", "", ""} << 1
                                 << QStringList{
                                        "Warning: Service/S: SSL is on, and the root certificate is missing.",
                                        "Error: Service/S: SSL is on, and the server certificate is missing.",
                                        "Error: Service/S: SSL is on, and the server key is missing."};
    QTest::newRow("clients with nothing to show")
        << QStringList{"", "ec.pem", "ec.key", "gone.pem"} << 1
        << QStringList{"Error: Service/S: SSL is on, and the root certificate is missing.",
                       "Warning: Service/S: SSL is on, and the client certificate 3 is missing.",
                       "Warning: Service/S: Clients have to show a certificate, and none is given."};
    QTest::newRow("another key") << QStringList{"rsa.pem", "ec.pem", "other.key", ""} << 1
                                 << QStringList{"Error: Service/S: The server key does not fit the server "
                                                "certificate."};
    QTest::newRow("files exchanged")
        << QStringList{"rsa.key", "ec.pem", "ec.pem", "ec.key"} << 1
        << QStringList{
               "Error: Service/S: The root certificate cannot be read.",
               "Error: Service/S: The server key cannot be read; perhaps its password is another one.",
               "Warning: Service/S: The client certificate 3 cannot be read."};
    QTest::newRow("expired") << QStringList{"rsa.pem", "ec.pem", "ec.key", "rsa.der"} << 11
                             << QStringList{
                                    "Error: Service/S: The root certificate expired on " + last + '.',
                                    "Error: Service/S: The server certificate expired on " + last + '.',
                                    "Warning: Service/S: The client certificate 3 expired on " + last + '.'};
    QTest::newRow("not yet valid")
        << QStringList{"rsa.pem", "ec.pem", "ec.key", "rsa.der"} << -1
        << QStringList{"Error: Service/S: The root certificate is not valid before " + first + '.',
                       "Error: Service/S: The server certificate is not valid before " + first + '.',
                       "Warning: Service/S: The client certificate 3 is not valid before " + first + '.'};
    QTest::newRow("of a kind that Qt does not know")
        << QStringList{"ed.pem", "ed.pem", "ed.key", ""} << 1 << QStringList();
}

void TestCertificateCheck::serviceIsChecked()
{
    QFETCH(QStringList, files);
    QFETCH(int, days);
    QFETCH(QStringList, expected);
    QStringList found;
    const auto remarks = ProjectCheck::remarksOn(project(files[0], files[1], files[2], files[3]),
                                                 QDateTime::currentDateTime().addDays(days));
    for (const ProjectCheck::Remark &remark : remarks) {
        found.append(remark.line());
    }
    QCOMPARE(found, expected);
}

QTEST_GUILESS_MAIN(TestCertificateCheck)
#include "tst_certificatecheck.moc"

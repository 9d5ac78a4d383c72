#include "document/projectreader.h"
#include "document/projectwriter.h"
#include "files.h"
#include "modaldialogs.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "services/serviceiec61850editdialog.h"

#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QJsonDocument>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStandardPaths>
#include <QtTest>

// A service with SSL on from the file dialog to the project file and back, with certificates as engineers
// have.
class TestServiceDocument : public QObject
{
    Q_OBJECT
private slots:
    void certificatesSurviveSaveAndLoadByteForByte();

private:
    void select(ServiceIEC61850EditDialog &form, const QString &slot, const QString &file);
};

namespace {

QStandardItem *serviceOf(QStandardItem *project)
{
    return ProjectTree::childNamed(project, ProjectTree::serviceFolder)->child(0);
}

// A root, a server certificate that it signed, its key, and both in the other forms that are in use.
bool makeCertificates(const QString &openssl)
{
    const QStringList commands{
        "req -x509 -newkey rsa:2048 -nodes -keyout root.key -out root.pem -days 2 -subj /CN=root",
        "req -newkey rsa:2048 -nodes -keyout server.key -out server.csr -subj /CN=server",
        "x509 -req -in server.csr -CA root.pem -CAkey root.key -CAcreateserial -days 2 -out server.crt",
        "x509 -in server.crt -outform DER -out server.der",
    };
    for (const QString &command : commands) {
        if (QProcess::execute(openssl, command.split(QLatin1Char(' '))) != 0) {
            return false;
        }
    }
    return true;
}

} // namespace

void TestServiceDocument::select(ServiceIEC61850EditDialog &form, const QString &slot, const QString &file)
{
    ModalDialogs dialogs;
    dialogs.expect([&file](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(QFileInfo(file).absoluteFilePath());
        QMetaObject::invokeMethod(dialog, "accept");
    });
    form.findChild<QPushButton *>(slot + "Select")->click();
    QCOMPARE(dialogs.pending(), 0);
}

void TestServiceDocument::certificatesSurviveSaveAndLoadByteForByte()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString openssl = QStandardPaths::findExecutable("openssl");
    if (openssl.isEmpty()) {
        QSKIP("openssl is not installed");
    }
    QVERIFY(makeCertificates(openssl));

    QStandardItemModel model;
    QStandardItem *project = ProjectTree::makeProject("Secure", QDir::currentPath(), "with SSL");
    model.appendRow(project);
    ProjectTree::appendMissingFolders(project);
    QStandardItem *service = ProjectTree::appendDefinition(
        ProjectTree::childNamed(project, ProjectTree::serviceFolder), "IEC61850", QString());
    service->setData("IEC61850", serviceProtocolRole);
    {
        ServiceIEC61850EditDialog form(service, nullptr);
        form.findChild<QCheckBox *>("enableSSL")->setChecked(true);
        form.findChild<QCheckBox *>("isVerifyClientCert")->setChecked(true);
        form.findChild<QLineEdit *>("serverKeyPassword")->setText("p\"w\\d é");
        select(form, "rootCertificate", "root.pem");
        select(form, "serverCertificate", "server.der");
        select(form, "serverKey", "server.key");
        select(form, "clientCertificate1", "server.crt");
        select(form, "clientCertificate10", "server.der");
        form.saveChanges();
    }
    const QByteArray saved = projectDocument(project);
    QFile file(projectFilePath(project));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(saved), qint64(saved.size()));
    file.close();

    QStandardItemModel other;
    QStandardItem *loaded = loadProject(
        other, QJsonDocument::fromJson(Files::contents(file.fileName())).object(), QDir::currentPath());
    QStandardItem *loadedService = serviceOf(loaded);
    const auto text = [loadedService](int role) { return loadedService->data(role).toString().toLatin1(); };
    QCOMPARE(text(serviceRootCertificateRole) + '\n', Files::contents("root.pem"));
    QCOMPARE(QByteArray::fromBase64(text(serviceServerCertificateRole)), Files::contents("server.der"));
    QCOMPARE(text(serviceServerKeyRole) + '\n', Files::contents("server.key"));
    QCOMPARE(text(serviceClientCertificate1Role) + '\n', Files::contents("server.crt"));
    QCOMPARE(QByteArray::fromBase64(text(serviceClientCertificate10Role)), Files::contents("server.der"));
    QCOMPARE(projectDocument(loaded), saved);

    // A form that opens on what was loaded and is saved untouched changes nothing.
    ServiceIEC61850EditDialog form(loadedService, nullptr);
    QVERIFY(form.findChild<QPushButton *>("clientCertificate10Select")->isEnabled());
    form.saveChanges();
    QCOMPARE(projectDocument(loaded), saved);
}

QTEST_MAIN(TestServiceDocument)
#include "tst_servicedocument.moc"

#include "document/projectwriter.h"
#include "files.h"
#include "model/itemroles.h"
#include "standardformtest.h"
#include "standards/standardopcuaeditdialog.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

// What the form of an OpcUA Standard has beyond its rows: user, certificate and key.
class TestStandardOPCUAEditDialog : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardOPCUAEditDialog()
        : StandardFormTest("Line", "OpcUA")
    {
    }
private slots:
    void authenticationDecidesWhetherAUserIsAsked();
    void authenticationIsStoredAsTheDocumentComparesIt();
    void selectedFileIsSavedWithItsContent_data();
    void selectedFileIsSavedWithItsContent();
    void fileThatCannotBeOpenedLeavesItsPath();
    void otherPathEmptiesBothRoles_data();
    void otherPathEmptiesBothRoles();
    void formMayDieBelowItsFileDialog_data();
    void formMayDieBelowItsFileDialog();
    void formMayDieBelowTheBoxOfItsPath();
    void itemMayLeaveBelowTheBoxOfItsPath();
};

namespace {

const QString certificateBox = "Warning|The certificate storage path is inconsistent with the "
                               "loading path.Please select the certificate again.Prevent data "
                               "loss.";
const QString keyBox = "Warning|The key storage path is inconsistent with the loading "
                       "path.Please select the key again.Prevent data loss.";

// The step of a file dialog that types the path and accepts.
ModalDialogs::Step choose(const QString &path)
{
    return [path](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

void addFiles()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("pathRole");
    QTest::addColumn<int>("contentRole");
    QTest::addColumn<QString>("box");
    QTest::newRow("certificate") << QByteArray("certificate") << int(standardCertificatePathRole)
                                 << int(standardCertificateRole) << certificateBox;
    QTest::newRow("key") << QByteArray("privateKey") << int(standardPrivateKeyPathRole)
                         << int(standardPrivateKeyRole) << keyBox;
}

} // namespace

void TestStandardOPCUAEditDialog::authenticationDecidesWhetherAUserIsAsked()
{
    m_item->setData("operator", standardUsernameRole);
    standardOPCUAEditDialog form(m_item, m_workspace);
    show(form);
    auto *authentication = find<QComboBox>(form, "authentication");
    QCOMPARE(authentication->currentText(), "anonymous");
    QVERIFY(!find<QLineEdit>(form, "username")->isVisible());
    authentication->setCurrentText("Username and password verification");
    for (const char *name : {"username", "password"}) {
        QVERIFY(find<QLineEdit>(form, name)->isVisible());
    }
    QCOMPARE(find<QLineEdit>(form, "password")->echoMode(), QLineEdit::Password);
    authentication->setCurrentText("anonymous");
    QVERIFY(!find<QLineEdit>(form, "password")->isVisible());
    form.saveChanges();
    QCOMPARE(m_item->data(standardUsernameRole), QVariant("operator"));
    QStandardItem named("Other");
    named.setData("Username and password verification", standardAuthenticationRole);
    form.replaceItem(&named);
    QVERIFY(find<QLineEdit>(form, "username")->isVisible());
}

void TestStandardOPCUAEditDialog::authenticationIsStoredAsTheDocumentComparesIt()
{
    QTranslator chinese;
    QVERIFY(chinese.load(":/adsdemo/chinese.qm"));
    QVERIFY(QCoreApplication::installTranslator(&chinese));
    QStandardItem *project = ProjectTree::makeProject("P", QString(), QString());
    QStandardItemModel model;
    model.appendRow(project);
    ProjectTree::appendMissingFolders(project);
    QStandardItem *item = ProjectTree::appendDefinition(project->child(0), "Line", QString());
    standardOPCUAEditDialog form(item, m_workspace);
    for (const char *code : {"0", "1"}) {
        find<QComboBox>(form, "authentication")->setCurrentIndex(QByteArray(code).toInt());
        form.saveChanges();
        const QJsonObject written =
            buildProjectJson(project).value(QLatin1String("standards")).toArray().at(0).toObject();
        QCOMPARE(written.value(QLatin1String("extendedParameters"))
                     .toObject()
                     .value(QLatin1String("authentication"))
                     .toString(),
                 QLatin1String(code));
    }
    QCOMPARE(item->data(standardAuthenticationRole), QVariant("用户名、密码验证"));
}

void TestStandardOPCUAEditDialog::selectedFileIsSavedWithItsContent_data()
{
    addFiles();
}

void TestStandardOPCUAEditDialog::selectedFileIsSavedWithItsContent()
{
    QFETCH(QByteArray, name);
    QFETCH(int, pathRole);
    QFETCH(int, contentRole);
    const QString path = QDir::current().absoluteFilePath("client.pem");
    Files::put(path, "-----PEM-----\n");
    standardOPCUAEditDialog form(m_item, m_workspace);
    m_dialogs->expect(choose(path));
    find<QPushButton>(form, name + "Select")->click();
    QCOMPARE(find<QLineEdit>(form, name + "Path")->text(), path);
    QCOMPARE(find<QLineEdit>(form, name + "Path")->toolTip(), path);
    m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
    find<QPushButton>(form, name + "Select")->click();
    QCOMPARE(m_item->data(pathRole), QVariant());
    form.saveChanges();
    QCOMPARE(m_item->data(pathRole), QVariant(path));
    QCOMPARE(m_item->data(contentRole), QVariant("-----PEM-----"));
    standardOPCUAEditDialog again(m_item, m_workspace);
    again.saveChanges();
    QCOMPARE(m_item->data(contentRole), QVariant("-----PEM-----"));
}

void TestStandardOPCUAEditDialog::fileThatCannotBeOpenedLeavesItsPath()
{
    const QString path = QDir::current().absoluteFilePath("gone.pem");
    Files::put(path, "x");
    m_item->setData("old", standardCertificateRole);
    standardOPCUAEditDialog form(m_item, m_workspace);
    m_dialogs->expect([path](QWidget *dialog) {
        // The file goes away between the choice and the reading.
        connect(qobject_cast<QFileDialog *>(dialog), &QFileDialog::accepted, dialog,
                [path] { QFile::remove(path); });
        choose(path)(dialog);
    });
    m_messages->expect();
    find<QPushButton>(form, "certificateSelect")->click();
    QCOMPARE(m_messages->told(), QStringList{"Error|Failed to open file: " + path});
    form.saveChanges();
    QCOMPARE(m_item->data(standardCertificatePathRole), QVariant(path));
    QCOMPARE(m_item->data(standardCertificateRole), QVariant(QString()));
}

void TestStandardOPCUAEditDialog::otherPathEmptiesBothRoles_data()
{
    addFiles();
}

void TestStandardOPCUAEditDialog::otherPathEmptiesBothRoles()
{
    QFETCH(QByteArray, name);
    QFETCH(int, pathRole);
    QFETCH(int, contentRole);
    QFETCH(QString, box);
    for (const int role : {standardCertificatePathRole, standardCertificateRole, standardPrivateKeyPathRole,
                           standardPrivateKeyRole}) {
        m_item->setData("/kept", role);
    }
    standardOPCUAEditDialog form(m_item, m_workspace);
    find<QLineEdit>(form, name + "Path")->setText("/other");
    m_messages->expect();
    form.saveChanges();
    QCOMPARE(m_messages->told(), QStringList{box});
    for (const int role : {standardCertificatePathRole, standardCertificateRole, standardPrivateKeyPathRole,
                           standardPrivateKeyRole}) {
        const bool emptied = role == pathRole || role == contentRole;
        QCOMPARE(m_item->data(role), QVariant(emptied ? QString() : "/kept"));
    }
    QCOMPARE(m_workspace->messages, QStringList{"The Standard OpcUa 'Line' is saved successfully."});
}

void TestStandardOPCUAEditDialog::formMayDieBelowItsFileDialog_data()
{
    addFiles();
}

void TestStandardOPCUAEditDialog::formMayDieBelowItsFileDialog()
{
    QFETCH(QByteArray, name);
    const QPointer<standardOPCUAEditDialog> form = new standardOPCUAEditDialog(m_item, m_workspace);
    m_dialogs->expect([form](QWidget *) { delete form; });
    find<QPushButton>(*form, name + "Select")->click();
    QVERIFY(!form);
}

void TestStandardOPCUAEditDialog::formMayDieBelowTheBoxOfItsPath()
{
    const QPointer<standardOPCUAEditDialog> form = new standardOPCUAEditDialog(m_item, m_workspace);
    find<QLineEdit>(*form, "certificatePath")->setText("/other");
    find<QLineEdit>(*form, "privateKeyPath")->setText("/other");
    delete m_messages; // which would answer the box first
    QTimer::singleShot(0, this, [form] { delete form; });
    form->saveChanges();
    m_messages = new Messages;
    QVERIFY(!form);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestStandardOPCUAEditDialog::itemMayLeaveBelowTheBoxOfItsPath()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem("gone"));
    standardOPCUAEditDialog form(model.item(0), m_workspace);
    find<QLineEdit>(form, "certificatePath")->setText("/other");
    find<QLineEdit>(form, "privateKeyPath")->setText("/other");
    m_messages->expect();
    QTimer::singleShot(0, &model, [&model] { model.clear(); });
    form.saveChanges();
    QCOMPARE(m_messages->told(), QStringList{certificateBox});
    QCOMPARE(m_workspace->messages, QStringList());
}

QTEST_MAIN(TestStandardOPCUAEditDialog)
#include "tst_standardopcuaeditdialog.moc"

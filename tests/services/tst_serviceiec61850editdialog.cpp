#include "files.h"
#include "messages.h"
#include "model/itemroles.h"
#include "services/serviceiec61850editdialog.h"
#include "workspacefake.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QTimer>
#include <QtTest>

#include <algorithm>

// The form of the IEC61850 service on an item and a faked main window.
class TestServiceIEC61850EditDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void newServiceShowsItsDefaults();
    void openingWritesTheDefaultPortOnly();
    void sslAndVerificationDecideWhatIsLive_data();
    void sslAndVerificationDecideWhatIsLive();
    void passwordRowFollowsTheAuthentication();
    void storedFlagsAreShown_data();
    void storedFlagsAreShown();
    void saveWritesEveryRole();
    void selectedFileIsSavedWithItsContent();
    void cancelLeavesTheItemAlone();
    void fileThatCannotBeOpenedLeavesItsPath();
    void writableFieldThatDiffersIsEmptied();
    void lastClientEmptiesTheOneBefore();
    void replaceItemShowsTheOtherService();
    void clearDataLeavesTheFilesAlone();
    void everyInputHasItsName();
    void rolesOfTheWrongTypeDoNoHarm();
    void saveWithoutItsNodeDoesNothing();

private:
    QStandardItem *m_item = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
};

namespace {

QLineEdit *edit(const QWidget &form, const char *name)
{
    return form.findChild<QLineEdit *>(QLatin1String(name));
}

QCheckBox *check(const QWidget &form, const char *name)
{
    return form.findChild<QCheckBox *>(QLatin1String(name));
}

QComboBox *list(const QWidget &form, const char *name)
{
    return form.findChild<QComboBox *>(QLatin1String(name));
}

void press(const QWidget &form, const char *name)
{
    form.findChild<QPushButton *>(QLatin1String(name))->click();
}

// Types a path into the file dialog that the next event loop brings up, or gives up if empty.
void answerFileDialog(const QString &path)
{
    QTimer::singleShot(0, qApp, [path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        if (path.isEmpty()) {
            dialog->reject();
            return;
        }
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        dialog->findChild<QPushButton *>()->setFocus();
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

} // namespace

void TestServiceIEC61850EditDialog::init()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_item = new QStandardItem("IEC61850");
    m_item->setData("IEC61850", serviceProtocolRole);
    m_workspace = new WorkspaceFake;
    m_messages = new Messages;
}

void TestServiceIEC61850EditDialog::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    delete m_messages;
    delete m_workspace;
    delete m_item;
}

void TestServiceIEC61850EditDialog::newServiceShowsItsDefaults()
{
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    QCOMPARE(edit(form, "name")->text(), "IEC61850");
    QVERIFY(edit(form, "name")->isReadOnly());
    QCOMPARE(list(form, "protocol")->currentText(), "IEC61850");
    QVERIFY(!list(form, "protocol")->isEnabled());
    QCOMPARE(edit(form, "port")->text(), "102");
    QCOMPARE(list(form, "authentication")->currentText(), "None");
    QVERIFY(edit(form, "password")->isHidden());
    QVERIFY(check(form, "enableGoosePublishing")->isChecked());
    QVERIFY(!check(form, "enableSSL")->isChecked());
    QVERIFY(!check(form, "isVerifyClientCert")->isChecked());
    QVERIFY(check(form, "isVerifyClientCert")->isEnabled());
    QVERIFY(!edit(form, "serverKeyPassword")->isEnabled());
    const auto fields = form.findChildren<QLineEdit *>();
    int fileFields = 0;
    for (const QLineEdit *field : fields) {
        if (field->objectName().endsWith(QLatin1String("Path"))) {
            ++fileFields;
            QVERIFY2(!field->isEnabled(), qPrintable(field->objectName()));
            QVERIFY(field->isReadOnly());
        }
    }
    QCOMPARE(fileFields, 13);
}

void TestServiceIEC61850EditDialog::openingWritesTheDefaultPortOnly()
{
    ServiceIEC61850EditDialog form(m_item, nullptr);
    QStandardItem expected("IEC61850");
    expected.setData("IEC61850", serviceProtocolRole);
    expected.setData("102", servicePortRole);
    for (int role = Qt::UserRole; role <= serviceServerKeyPasswordRole; ++role) {
        QCOMPARE(m_item->data(role), expected.data(role));
    }
}

void TestServiceIEC61850EditDialog::sslAndVerificationDecideWhatIsLive_data()
{
    QTest::addColumn<bool>("ssl");
    QTest::addColumn<bool>("verify");
    QTest::newRow("neither") << false << false;
    QTest::newRow("verification alone") << false << true;
    QTest::newRow("SSL alone") << true << false;
    QTest::newRow("both") << true << true;
}

void TestServiceIEC61850EditDialog::sslAndVerificationDecideWhatIsLive()
{
    QFETCH(bool, ssl);
    QFETCH(bool, verify);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    check(form, "isVerifyClientCert")->setChecked(!verify);
    check(form, "isVerifyClientCert")->setChecked(verify);
    check(form, "enableSSL")->setChecked(!ssl);
    check(form, "enableSSL")->setChecked(ssl);
    for (const char *name :
         {"rootCertificatePath", "serverCertificatePath", "serverKeyPath", "serverKeyPassword"}) {
        QCOMPARE(edit(form, name)->isEnabled(), ssl);
    }
    QCOMPARE(form.findChild<QPushButton *>("rootCertificateSelect")->isEnabled(), ssl);
    QCOMPARE(list(form, "authentication")->isEnabled(), !ssl);
    QCOMPARE(edit(form, "password")->isEnabled(), !ssl);
    for (int client = 1; client <= 10; ++client) {
        const QString name = QString("clientCertificate%1").arg(client);
        QCOMPARE(form.findChild<QLineEdit *>(name + "Path")->isEnabled(), ssl && verify);
        QCOMPARE(form.findChild<QPushButton *>(name + "Select")->isEnabled(), ssl && verify);
    }
    QVERIFY(check(form, "isVerifyClientCert")->isEnabled());
    QCOMPARE(check(form, "isVerifyClientCert")->isChecked(), verify);
}

void TestServiceIEC61850EditDialog::passwordRowFollowsTheAuthentication()
{
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    const auto labelIsHidden = [&form] {
        const auto labels = form.findChildren<QLabel *>();
        const auto label = std::find_if(labels.begin(), labels.end(), [&form](const QLabel *each) {
            return each->buddy() == edit(form, "password");
        });
        return label == labels.end() || (*label)->isHidden();
    };
    list(form, "authentication")->setCurrentText("Password");
    QVERIFY(!edit(form, "password")->isHidden());
    QVERIFY(!labelIsHidden());
    QCOMPARE(edit(form, "password")->echoMode(), QLineEdit::Password);
    list(form, "authentication")->setCurrentText("None");
    QVERIFY(edit(form, "password")->isHidden());
    QVERIFY(labelIsHidden());
}

void TestServiceIEC61850EditDialog::storedFlagsAreShown_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("goose");
    QTest::addColumn<bool>("ssl");
    QTest::newRow("unset") << QVariant() << true << false;
    QTest::newRow("text true, as loaded") << QVariant("true") << true << true;
    QTest::newRow("text false, as loaded") << QVariant("false") << false << false;
    QTest::newRow("boolean true, as saved") << QVariant(true) << true << true;
    QTest::newRow("boolean false, as saved") << QVariant(false) << false << false;
    QTest::newRow("empty text") << QVariant(QString(QLatin1String(""))) << false << false;
}

void TestServiceIEC61850EditDialog::storedFlagsAreShown()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, goose);
    QFETCH(bool, ssl);
    m_item->setData(stored, serviceEnableGoosePublishingRole);
    m_item->setData(stored, serviceEnableSslRole);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    QCOMPARE(check(form, "enableGoosePublishing")->isChecked(), goose);
    QCOMPARE(check(form, "enableSSL")->isChecked(), ssl);
}

void TestServiceIEC61850EditDialog::saveWritesEveryRole()
{
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    edit(form, "port")->setText("10102");
    list(form, "authentication")->setCurrentText("Password");
    edit(form, "password")->setText("secret");
    check(form, "enableGoosePublishing")->setChecked(false);
    check(form, "enableSSL")->setChecked(true);
    edit(form, "serverKeyPassword")->setText("key secret");
    check(form, "isVerifyClientCert")->setChecked(true);
    press(form, "saveButton");
    QCOMPARE(m_item->text(), "IEC61850");
    QCOMPARE(m_item->data(serviceProtocolRole), QVariant("IEC61850"));
    QCOMPARE(m_item->data(servicePortRole), QVariant("10102"));
    QCOMPARE(m_item->data(serviceAuthenticationRole), QVariant("Password"));
    QCOMPARE(m_item->data(servicePasswordRole), QVariant("secret"));
    QCOMPARE(m_item->data(serviceEnableGoosePublishingRole), QVariant(false));
    QCOMPARE(m_item->data(serviceEnableSslRole), QVariant(true));
    QCOMPARE(m_item->data(serviceServerKeyPasswordRole), QVariant("key secret"));
    QCOMPARE(m_item->data(serviceIsVerifyClientCertRole), QVariant(true));
    QCOMPARE(m_item->data(serviceClientCertificate10Role), QVariant(QString()));
    QCOMPARE(m_workspace->messages, QStringList{"The Standard OpcUa 'IEC61850' is saved successfully."});
}

void TestServiceIEC61850EditDialog::selectedFileIsSavedWithItsContent()
{
    const QString path = Files::put("root.pem", "-----CERT-----\n");
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    check(form, "enableSSL")->setChecked(true);
    answerFileDialog(path);
    press(form, "rootCertificateSelect");
    QCOMPARE(edit(form, "rootCertificatePath")->text(), path);
    answerFileDialog(QString());
    press(form, "rootCertificateSelect");
    QCOMPARE(edit(form, "rootCertificatePath")->text(), path);
    press(form, "saveButton");
    QCOMPARE(m_item->data(serviceRootCertificatePathRole), QVariant(path));
    QCOMPARE(m_item->data(serviceRootCertificateRole), QVariant("-----CERT-----"));
}

void TestServiceIEC61850EditDialog::cancelLeavesTheItemAlone()
{
    const QString path = Files::put("key.key", "KEY");
    m_item->setData("old", serviceServerKeyRole);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    QSignalSpy rejected(&form, &QDialog::rejected);
    check(form, "enableSSL")->setChecked(true);
    answerFileDialog(path);
    press(form, "serverKeySelect");
    press(form, "cancelButton");
    QCOMPARE(rejected.size(), 1);
    QCOMPARE(m_item->data(serviceServerKeyRole), QVariant("old"));
    QCOMPARE(m_item->data(serviceServerKeyPathRole), QVariant());
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestServiceIEC61850EditDialog::fileThatCannotBeOpenedLeavesItsPath()
{
    const QString path = QDir::current().absoluteFilePath("gone.pem");
    Files::put(path, "x");
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    check(form, "enableSSL")->setChecked(true);
    m_messages->expect();
    // The file goes away between the choice and the reading: a link to nowhere takes its place.
    QTimer::singleShot(0, qApp, [path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        connect(dialog, &QFileDialog::accepted, dialog, [path] { QFile::remove(path); });
        QMetaObject::invokeMethod(dialog, "accept");
    });
    press(form, "serverCertificateSelect");
    QCOMPARE(m_messages->told(), QStringList{"Error|Failed to open file: " + path});
    press(form, "saveButton");
    QCOMPARE(m_item->data(serviceServerCertificatePathRole), QVariant(path));
    QCOMPARE(m_item->data(serviceServerCertificateRole), QVariant(QString()));
}

void TestServiceIEC61850EditDialog::writableFieldThatDiffersIsEmptied()
{
    m_item->setData("/a.pem", serviceRootCertificatePathRole);
    m_item->setData("A", serviceRootCertificateRole);
    m_item->setData("/k.key", serviceServerKeyPathRole);
    m_item->setData("K", serviceServerKeyRole);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    edit(form, "rootCertificatePath")->setText("/b.pem");
    edit(form, "serverKeyPath")->setText("/b.key");
    m_messages->expect();
    m_messages->expect();
    press(form, "saveButton");
    QCOMPARE(m_messages->told(),
             (QStringList{"Warning|The certificate storage path is inconsistent with the loading "
                          "path.Please select the certificate again.Prevent data loss.",
                          "Warning|The key storage path is inconsistent with the loading path."
                          "Please select the key again.Prevent data loss."}));
    for (const int role : {serviceRootCertificatePathRole, serviceRootCertificateRole,
                           serviceServerKeyPathRole, serviceServerKeyRole}) {
        QCOMPARE(m_item->data(role), QVariant(QString()));
    }
}

void TestServiceIEC61850EditDialog::lastClientEmptiesTheOneBefore()
{
    m_item->setData("/9.pem", serviceClientCertificatePath9Role);
    m_item->setData("nine", serviceClientCertificate9Role);
    m_item->setData("/10.pem", serviceClientCertificatePath10Role);
    m_item->setData("ten", serviceClientCertificate10Role);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    edit(form, "clientCertificate10Path")->setText("/other.pem");
    m_messages->expect();
    press(form, "saveButton");
    QCOMPARE(m_item->data(serviceClientCertificatePath9Role), QVariant(QString()));
    QCOMPARE(m_item->data(serviceClientCertificate9Role), QVariant(QString()));
    QCOMPARE(m_item->data(serviceClientCertificatePath10Role), QVariant("/10.pem"));
    QCOMPARE(m_item->data(serviceClientCertificate10Role), QVariant("ten"));
}

void TestServiceIEC61850EditDialog::replaceItemShowsTheOtherService()
{
    QStandardItem other("Other");
    other.setData("1102", servicePortRole);
    other.setData("Password", serviceAuthenticationRole);
    other.setData("true", serviceEnableSslRole);
    other.setData("/c3.pem", serviceClientCertificatePath3Role);
    other.setData("three", serviceClientCertificate3Role);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    form.replaceItem(&other);
    QCOMPARE(edit(form, "name")->text(), "Other");
    QCOMPARE(edit(form, "port")->text(), "1102");
    QCOMPARE(list(form, "protocol")->currentText(), "IEC61850");
    QCOMPARE(list(form, "authentication")->currentText(), "Password");
    QVERIFY(!list(form, "authentication")->isEnabled());
    QCOMPARE(edit(form, "clientCertificate3Path")->text(), "/c3.pem");
    QVERIFY(edit(form, "rootCertificatePath")->isEnabled());
    QVERIFY(!edit(form, "clientCertificate3Path")->isEnabled());
    press(form, "saveButton");
    QCOMPARE(other.data(serviceClientCertificate3Role), QVariant("three"));
    QCOMPARE(m_item->data(serviceAuthenticationRole), QVariant());

    QStandardItem fresh("Fresh");
    form.replaceItem(&fresh);
    QCOMPARE(list(form, "authentication")->currentText(), "None");
    QCOMPARE(edit(form, "port")->text(), QString());
    QCOMPARE(fresh.data(servicePortRole), QVariant());
}

void TestServiceIEC61850EditDialog::clearDataLeavesTheFilesAlone()
{
    m_item->setData("/a.pem", serviceRootCertificatePathRole);
    m_item->setData("true", serviceEnableSslRole);
    m_item->setData("true", serviceIsVerifyClientCertRole);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    form.clearData();
    QCOMPARE(edit(form, "name")->text(), QString());
    QCOMPARE(edit(form, "port")->text(), QString());
    QCOMPARE(list(form, "authentication")->count(), 0);
    QVERIFY(!check(form, "enableSSL")->isChecked());
    QVERIFY(!check(form, "isVerifyClientCert")->isChecked());
    QCOMPARE(edit(form, "rootCertificatePath")->text(), "/a.pem");
}

void TestServiceIEC61850EditDialog::everyInputHasItsName()
{
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    QStringList names;
    const auto widgets = form.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget)
            || qobject_cast<const QCheckBox *>(widget)) {
            names.append(widget->objectName());
        }
    }
    QStringList expected{"name",
                         "protocol",
                         "port",
                         "authentication",
                         "password",
                         "enableGoosePublishing",
                         "enableSSL",
                         "rootCertificatePath",
                         "serverCertificatePath",
                         "serverKeyPath",
                         "serverKeyPassword",
                         "isVerifyClientCert"};
    for (int client = 1; client <= 10; ++client) {
        expected.append(QString("clientCertificate%1Path").arg(client));
    }
    names.sort();
    expected.sort();
    QCOMPARE(names, expected);
}

void TestServiceIEC61850EditDialog::rolesOfTheWrongTypeDoNoHarm()
{
    for (int role = serviceProtocolRole; role <= serviceServerKeyPasswordRole; ++role) {
        m_item->setData(QVariantList{1, "x"}, role);
    }
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    press(form, "saveButton");
    QCOMPARE(m_item->data(serviceRootCertificateRole), QVariant(QString()));
}

void TestServiceIEC61850EditDialog::saveWithoutItsNodeDoesNothing()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem("gone"));
    ServiceIEC61850EditDialog form(model.item(0), m_workspace);
    model.removeRow(0);
    form.saveChanges();
    QCoreApplication::processEvents();
    QCOMPARE(m_workspace->messages, QStringList());
}

QTEST_MAIN(TestServiceIEC61850EditDialog)
#include "tst_serviceiec61850editdialog.moc"

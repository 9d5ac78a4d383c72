#include "formtest.h"
#include "model/itemroles.h"
#include "services/serviceiec61850editdialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

// The form of the IEC61850 service on an item and a faked main window.
class TestServiceIEC61850EditDialog : public FormTest
{
    Q_OBJECT
public:
    TestServiceIEC61850EditDialog()
        : FormTest("IEC61850", serviceProtocolRole, "IEC61850")
    {
    }
private slots:
    void newServiceShowsItsDefaults();
    void openingWritesTheDefaultPortOnly();
    void sslAndVerificationDecideWhatIsLive_data();
    void sslAndVerificationDecideWhatIsLive();
    void passwordRowFollowsTheAuthentication();
    void storedFlagsAreShown_data();
    void storedFlagsAreShown();
    void saveWritesEveryRole();
    void lastClientEmptiesTheOneBefore();
    void replaceItemShowsTheOtherService();
    void clearDataLeavesTheFilesAlone();
    void everyInputHasItsName();
    void savingWritesRolesInOrder();
};

void TestServiceIEC61850EditDialog::newServiceShowsItsDefaults()
{
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    QCOMPARE(textsOf(form, {"name", "protocol", "port", "authentication"}),
             QStringList({"IEC61850", "IEC61850", "102", "None"}));
    QVERIFY(edit(form, "name")->isReadOnly());
    QVERIFY(!list(form, "protocol")->isEnabled());
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
    const QMap<int, QVariant> expected{{serviceProtocolRole, "IEC61850"}, {servicePortRole, "102"}};
    QCOMPARE(rolesOf(*m_item), expected);
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
    const auto labels = form.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (qobject_cast<QPushButton *>(label->buddy())) {
            QVERIFY2(label->isEnabled() == label->buddy()->isEnabled(), qPrintable(label->text()));
        }
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
    QTest::newRow("empty text") << QVariant(QString("")) << false << false;
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
    click(form, "saveButton");
    QCOMPARE(m_item->data(serviceProtocolRole), QVariant("IEC61850"));
    QCOMPARE(m_item->data(servicePortRole), QVariant("10102"));
    QCOMPARE(m_item->data(serviceAuthenticationRole), QVariant("Password"));
    QCOMPARE(m_item->data(servicePasswordRole), QVariant("secret"));
    QCOMPARE(m_item->data(serviceEnableGoosePublishingRole), QVariant(false));
    QCOMPARE(m_item->data(serviceEnableSslRole), QVariant(true));
    QCOMPARE(m_item->data(serviceServerKeyPasswordRole), QVariant("key secret"));
    QCOMPARE(m_item->data(serviceIsVerifyClientCertRole), QVariant(true));
    QCOMPARE(m_item->data(serviceClientCertificate10Role), QVariant(QString()));
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
    click(form, "saveButton");
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
    QCOMPARE(textsOf(form, {"name", "port", "protocol", "authentication", "clientCertificate3Path"}),
             QStringList({"Other", "1102", "IEC61850", "Password", "/c3.pem"}));
    QVERIFY(!list(form, "authentication")->isEnabled());
    QVERIFY(edit(form, "rootCertificatePath")->isEnabled());
    QVERIFY(!edit(form, "clientCertificate3Path")->isEnabled());
    click(form, "saveButton");
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
    QStringList expected =
        QString(
            "name protocol port authentication password enableGoosePublishing enableSSL rootCertificatePath "
            "serverCertificatePath serverKeyPath serverKeyPassword isVerifyClientCert")
            .split(QLatin1Char(' '));
    for (int client = 1; client <= 10; ++client) {
        expected.append(QString("clientCertificate%1Path").arg(client));
    }
    expected.sort();
    QCOMPARE(inputsOf(form), expected);
}

// What a listener to the tree sees change, one after the other.
void TestServiceIEC61850EditDialog::savingWritesRolesInOrder()
{
    QVector<int> expected{Qt::DisplayRole,
                          serviceProtocolRole,
                          servicePortRole,
                          serviceAuthenticationRole,
                          servicePasswordRole,
                          serviceServerKeyPasswordRole,
                          serviceEnableGoosePublishingRole,
                          serviceEnableSslRole,
                          serviceRootCertificatePathRole,
                          serviceRootCertificateRole,
                          serviceServerCertificatePathRole,
                          serviceServerCertificateRole,
                          serviceServerKeyPathRole,
                          serviceServerKeyRole};
    for (int client = 0; client < 10; ++client) {
        expected.append(serviceClientCertificatePath1Role + 2 * client);
        expected.append(serviceClientCertificate1Role + 2 * client);
    }
    expected.append(serviceIsVerifyClientCertRole);

    ServiceIEC61850EditDialog form(m_item, m_workspace);
    for (int role : qAsConst(expected)) {
        m_item->setData("changed meanwhile", role);
    }
    QVector<int> written;
    connect(m_item->model(), &QStandardItemModel::dataChanged, &form,
            [&written](const QModelIndex &, const QModelIndex &, const QVector<int> &roles) {
                written.append(roles.first());
            });
    form.saveChanges();
    QCOMPARE(written, expected);
}

QTEST_MAIN(TestServiceIEC61850EditDialog)
#include "tst_serviceiec61850editdialog.moc"

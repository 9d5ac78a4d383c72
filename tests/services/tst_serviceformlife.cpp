#include "logtail.h"
#include "messages.h"
#include "modaldialogs.h"
#include "model/itemroles.h"
#include "services/serviceiec61850editdialog.h"
#include "workspacefake.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QTimer>
#include <QtTest>

// The form of the IEC61850 service from its making to its end, which may come below a dialog of its own.
class TestServiceFormLife : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void formMayDieBelowItsFileDialog_data();
    void formMayDieBelowItsFileDialog();
    void formMayDieBelowTheBoxOfItsPath();
    void itemMayLeaveBelowTheBoxOfItsPath();
    void otherItemMayComeBelowTheBoxOfItsPath();
    void savingWritesRolesInOrder();
    void writesItsLifeToTheLog();

private:
    QStandardItem *m_item = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
};

void TestServiceFormLife::init()
{
    m_item = new QStandardItem("IEC61850");
    m_workspace = new WorkspaceFake;
    m_messages = new Messages;
}

void TestServiceFormLife::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    delete m_messages;
    delete m_workspace;
    delete m_item;
}

void TestServiceFormLife::formMayDieBelowItsFileDialog_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("certificate") << QByteArray("rootCertificateSelect");
    QTest::newRow("key") << QByteArray("serverKeySelect");
    QTest::newRow("client") << QByteArray("clientCertificate10Select");
}

void TestServiceFormLife::formMayDieBelowItsFileDialog()
{
    QFETCH(QByteArray, button);
    ModalDialogs dialogs;
    const QPointer<ServiceIEC61850EditDialog> form = new ServiceIEC61850EditDialog(m_item, m_workspace);
    form->findChild<QCheckBox *>("enableSSL")->setChecked(true);
    form->findChild<QCheckBox *>("isVerifyClientCert")->setChecked(true);
    dialogs.expect([form](QWidget *) { delete form; });
    form->findChild<QPushButton *>(QString::fromLatin1(button))->click();
    QVERIFY(!form);
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(m_item->data(serviceRootCertificatePathRole), QVariant());
}

void TestServiceFormLife::formMayDieBelowTheBoxOfItsPath()
{
    const QPointer<ServiceIEC61850EditDialog> form = new ServiceIEC61850EditDialog(m_item, m_workspace);
    form->findChild<QLineEdit *>("rootCertificatePath")->setText("/other");
    form->findChild<QLineEdit *>("serverKeyPath")->setText("/other");
    delete m_messages; // which would answer the box first
    QTimer::singleShot(0, this, [form] { delete form; });
    form->saveChanges();
    m_messages = new Messages;
    QVERIFY(!form);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestServiceFormLife::itemMayLeaveBelowTheBoxOfItsPath()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem("gone"));
    ServiceIEC61850EditDialog form(model.item(0), m_workspace);
    form.findChild<QLineEdit *>("rootCertificatePath")->setText("/other");
    form.findChild<QLineEdit *>("serverKeyPath")->setText("/other");
    m_messages->expect();
    QTimer::singleShot(0, &model, [&model] { model.clear(); });
    form.saveChanges();
    QCOMPARE(m_messages->told().size(), 1);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestServiceFormLife::otherItemMayComeBelowTheBoxOfItsPath()
{
    QStandardItem other("Other");
    other.setData("kept", serviceRootCertificateRole);
    ServiceIEC61850EditDialog form(m_item, m_workspace);
    form.findChild<QLineEdit *>("rootCertificatePath")->setText("/other");
    m_messages->expect();
    QTimer::singleShot(0, &form, [&form, &other] { form.replaceItem(&other); });
    form.saveChanges();
    QCOMPARE(m_messages->told().size(), 1);
    QCOMPARE(other.data(serviceRootCertificateRole), QVariant("kept"));
    QCOMPARE(other.data(serviceServerKeyPathRole), QVariant());
    QCOMPARE(m_item->data(serviceIsVerifyClientCertRole), QVariant());
    QCOMPARE(m_workspace->messages, QStringList());
}

// What a listener to the tree sees change, one after the other.
void TestServiceFormLife::savingWritesRolesInOrder()
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

    QStandardItemModel model;
    model.appendRow(new QStandardItem("IEC61850"));
    ServiceIEC61850EditDialog form(model.item(0), m_workspace);
    for (int role : qAsConst(expected)) {
        model.item(0)->setData("changed meanwhile", role);
    }
    QVector<int> written;
    connect(&model, &QStandardItemModel::dataChanged, this,
            [&written](const QModelIndex &, const QModelIndex &, const QVector<int> &roles) {
                written.append(roles.first());
            });
    form.saveChanges();
    QCOMPARE(written, expected);
}

void TestServiceFormLife::writesItsLifeToTheLog()
{
    const LogTail log("ServiceIEC61850EditDialog");
    QStandardItem other("Other");
    {
        ServiceIEC61850EditDialog form(m_item, m_workspace);
        form.replaceItem(&other);
        form.saveChanges();
    }
    QCOMPARE(log.events(),
             (QStringList{"ServiceIEC61850EditDialog: new-nuilt", "ServiceIEC61850EditDialog: replace",
                          "ServiceIEC61850EditDialog: save", "ServiceIEC61850EditDialog: destroyed"}));
}

QTEST_MAIN(TestServiceFormLife)
#include "tst_serviceformlife.moc"

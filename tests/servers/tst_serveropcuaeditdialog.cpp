#include "serverformtest.h"

using namespace ServerFormTest;

// What only the form of the OPC UA server has: the choice of an anonymous log-in.
class TestServerOPCUAEditDialog : public QObject
{
    Q_OBJECT
private slots:
    void newServerShowsItsPortAndNoLogIn();
    void storedChoiceIsShown_data();
    void storedChoiceIsShown();
    void anonymousLeavesTheCredentialsEditable();
    void clearDataTakesTheChoiceAway();
};

namespace {

QStandardItem *addOpcUa(QStandardItemModel *model, const QVariant &anonymous)
{
    QStandardItem *item = addServer(model, "up", "OpcUaServer");
    item->setData(anonymous, serverAnonymousRole);
    return item;
}

} // namespace

void TestServerOPCUAEditDialog::newServerShowsItsPortAndNoLogIn()
{
    QStandardItemModel model;
    QStandardItem *item = addOpcUa(&model, QVariant());
    item->setData("4840", serverPortRole);
    const ServerOPCUAEditDialog form(item, nullptr);
    QCOMPARE(valuesOf(form),
             QStringList({"name=up", "description=", "protocol=OpcUaServer", "port=4840", "anonymous=false",
                          "username=", "password="}));
}

void TestServerOPCUAEditDialog::storedChoiceIsShown_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("reboundFromTrue");
    const QString yes = "true";
    const QString no = "false";
    QTest::newRow("true") << QVariant(yes) << yes << yes;
    QTest::newRow("false") << QVariant(no) << no << no;
    QTest::newRow("unset") << QVariant() << no << yes;
    QTest::newRow("empty") << QVariant(QString()) << no << yes;
    QTest::newRow("capital") << QVariant("True") << no << yes;
    QTest::newRow("other") << QVariant("1") << no << yes;
}

// An open form that is pointed at a Server whose text is of neither entry goes on showing what it showed.
void TestServerOPCUAEditDialog::storedChoiceIsShown()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, opened);
    QFETCH(QString, reboundFromTrue);
    QStandardItemModel model;
    QStandardItem *item = addOpcUa(&model, stored);
    ServerOPCUAEditDialog form(item, nullptr);
    QCOMPARE(input<QComboBox>(form, "anonymous")->currentText(), opened);
    form.replaceItem(addOpcUa(&model, "true"));
    QCOMPARE(input<QComboBox>(form, "anonymous")->currentText(), "true");
    form.replaceItem(item);
    QCOMPARE(input<QComboBox>(form, "anonymous")->currentText(), reboundFromTrue);
    form.saveChanges();
    QCOMPARE(item->data(serverAnonymousRole), QVariant(reboundFromTrue));
}

void TestServerOPCUAEditDialog::anonymousLeavesTheCredentialsEditable()
{
    QStandardItemModel model;
    QStandardItem *item = addOpcUa(&model, "false");
    ServerOPCUAEditDialog form(item, nullptr);
    input<QComboBox>(form, "anonymous")->setCurrentText("true");
    for (const char *name : {"username", "password"}) {
        QVERIFY2(input<QLineEdit>(form, name)->isEnabled(), name);
        QTest::keyClicks(input<QLineEdit>(form, name), "ann");
    }
    form.saveChanges();
    QCOMPARE(item->data(serverAnonymousRole), QVariant("true"));
    QCOMPARE(item->data(serverUsernameRole), QVariant("ann"));
    QCOMPARE(item->data(serverPasswordRole), QVariant("ann"));
}

void TestServerOPCUAEditDialog::clearDataTakesTheChoiceAway()
{
    QStandardItemModel model;
    QStandardItem *item = addOpcUa(&model, "true");
    ServerOPCUAEditDialog form(item, nullptr);
    form.clearData();
    QCOMPARE(input<QComboBox>(form, "anonymous")->count(), 0);
    QCOMPARE(input<QComboBox>(form, "protocol")->count(), 1);
    form.replaceItem(item);
    form.saveChanges();
    QCOMPARE(item->data(serverAnonymousRole), QVariant(QString()));
}

QTEST_MAIN(TestServerOPCUAEditDialog)
#include "tst_serveropcuaeditdialog.moc"

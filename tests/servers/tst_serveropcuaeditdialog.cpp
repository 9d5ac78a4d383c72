#include "serverformtest.h"

using namespace ServerFormTest;

// What only the form of the OPC UA server has: the choice of an anonymous log-in.
class TestServerOPCUAEditDialog : public FormTest
{
    Q_OBJECT
public:
    TestServerOPCUAEditDialog()
        : FormTest("up", serverProtocolRole, "OpcUaServer")
    {
    }
private slots:
    void newServerShowsItsPortAndNoLogIn();
    void storedChoiceIsShown_data();
    void storedChoiceIsShown();
    void anonymousLeavesTheCredentialsEditable();
    void clearDataTakesTheChoiceAway();
};

void TestServerOPCUAEditDialog::newServerShowsItsPortAndNoLogIn()
{
    m_item->setData("4840", serverPortRole);
    const ServerOPCUAEditDialog form(m_item, nullptr);
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
    m_item->setData(stored, serverAnonymousRole);
    ServerOPCUAEditDialog form(m_item, nullptr);
    QCOMPARE(list(form, "anonymous")->currentText(), opened);
    QStandardItem *other = addItem("other");
    other->setData("true", serverAnonymousRole);
    form.replaceItem(other);
    QCOMPARE(list(form, "anonymous")->currentText(), "true");
    form.replaceItem(m_item);
    QCOMPARE(list(form, "anonymous")->currentText(), reboundFromTrue);
    form.saveChanges();
    QCOMPARE(m_item->data(serverAnonymousRole), QVariant(reboundFromTrue));
}

void TestServerOPCUAEditDialog::anonymousLeavesTheCredentialsEditable()
{
    m_item->setData("false", serverAnonymousRole);
    ServerOPCUAEditDialog form(m_item, nullptr);
    list(form, "anonymous")->setCurrentText("true");
    for (const char *name : {"username", "password"}) {
        QVERIFY2(edit(form, name)->isEnabled(), name);
        QTest::keyClicks(edit(form, name), "ann");
    }
    form.saveChanges();
    QCOMPARE(m_item->data(serverAnonymousRole), QVariant("true"));
    QCOMPARE(m_item->data(serverUsernameRole), QVariant("ann"));
    QCOMPARE(m_item->data(serverPasswordRole), QVariant("ann"));
}

void TestServerOPCUAEditDialog::clearDataTakesTheChoiceAway()
{
    m_item->setData("true", serverAnonymousRole);
    ServerOPCUAEditDialog form(m_item, nullptr);
    form.clearData();
    QCOMPARE(list(form, "anonymous")->count(), 0);
    QCOMPARE(list(form, "protocol")->count(), 1);
    form.replaceItem(m_item);
    form.saveChanges();
    QCOMPARE(m_item->data(serverAnonymousRole), QVariant(QString()));
}

QTEST_MAIN(TestServerOPCUAEditDialog)
#include "tst_serveropcuaeditdialog.moc"

#include "document/projectwriter.h"
#include "model/itemroles.h"
#include "standardformtest.h"
#include "standards/standardopcuaeditdialog.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QTranslator>

// How the form of an OpcUA Standard asks for a user.
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
};

void TestStandardOPCUAEditDialog::authenticationDecidesWhetherAUserIsAsked()
{
    m_item->setData("operator", standardUsernameRole);
    standardOPCUAEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QComboBox *authentication = list(form, "authentication");
    QCOMPARE(authentication->currentText(), "anonymous");
    QVERIFY(!edit(form, "username")->isVisible());
    authentication->setCurrentText("Username and password verification");
    for (const char *name : {"username", "password"}) {
        QVERIFY(edit(form, name)->isVisible());
    }
    QCOMPARE(edit(form, "password")->echoMode(), QLineEdit::Password);
    authentication->setCurrentText("anonymous");
    QVERIFY(!edit(form, "password")->isVisible());
    form.saveChanges();
    QCOMPARE(m_item->data(standardUsernameRole), QVariant("operator"));
    QStandardItem named("Other");
    named.setData("Username and password verification", standardAuthenticationRole);
    form.replaceItem(&named);
    QVERIFY(edit(form, "username")->isVisible());
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
        list(form, "authentication")->setCurrentIndex(QByteArray(code).toInt());
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

QTEST_MAIN(TestStandardOPCUAEditDialog)
#include "tst_standardopcuaeditdialog.moc"

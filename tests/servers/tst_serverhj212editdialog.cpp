#include "pointformtest.h"
#include "servers/serverhj212editdialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegExpValidator>
#include <QRegularExpressionValidator>

// The form of an HJ212 server.
class TestServerHJ212EditDialog : public PointFormTest
{
    Q_OBJECT
public:
    TestServerHJ212EditDialog()
        : PointFormTest("Platform", "HJ212")
    {
    }
private slots:
    void storedCommandCodeStays();
    void validatorsOfTheNewerKind();
    void factorCode_data();
    void factorCode();
    void saveChecksNothing();

private:
    static QLineEdit *factor(const QWidget &form, int row)
    {
        return qobject_cast<QLineEdit *>(pointTable(form)->cellWidget(row, 2));
    }
};

namespace {

const QString source = "Meter A";

} // namespace

void TestServerHJ212EditDialog::storedCommandCodeStays()
{
    m_item->setData("2051", serverCommandCodeRole);
    const ServerHJ212EditDialog form(m_item, nullptr);
    QCOMPARE(edit(form, "commandCode")->text(), "2051");
    QCOMPARE(m_item->data(serverCommandCodeRole), QVariant("2051"));
}

// They differ from the older kind in characters beyond U+FFFF.
void TestServerHJ212EditDialog::validatorsOfTheNewerKind()
{
    const ServerHJ212EditDialog form(m_item, m_workspace);
    for (const char *name : {"ip", "password"}) {
        QVERIFY2(qobject_cast<const QRegularExpressionValidator *>(edit(form, name)->validator()), name);
    }
    QString beyond = "\U00020000";
    int position = 0;
    QCOMPARE(edit(form, "password")->validator()->validate(beyond, position), QValidator::Acceptable);
}

void TestServerHJ212EditDialog::factorCode_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("code") << "w01018"
                          << "w01018";
    QTest::newRow("capital letters") << "A34013"
                                     << "A34013";
    QTest::newRow("dash and blank") << "a-3 4"
                                    << "a34";
}

void TestServerHJ212EditDialog::factorCode()
{
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    ServerHJ212EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("flow")}, source);
    QVERIFY(qobject_cast<const QRegExpValidator *>(factor(form, 0)->validator()));
    QTest::keyClicks(factor(form, 0), typed);
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item), (RowList{{source, "flow", taken}}));
}

void TestServerHJ212EditDialog::saveChecksNothing()
{
    ServerHJ212EditDialog form(m_item, m_workspace);
    edit(form, "ip")->setText("10.1.");
    click(form, "saveButton");
    QCOMPARE(m_item->data(serverIpRole), QVariant("10.1."));
    QCOMPARE(m_item->data(serverSystemCodeRole), QVariant(21));
}

QTEST_MAIN(TestServerHJ212EditDialog)
#include "tst_serverhj212editdialog.moc"

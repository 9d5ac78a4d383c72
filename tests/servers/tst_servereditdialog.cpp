#include "serverformtest.h"

#include "servers/javascripthighlighter.h"

using namespace ServerFormTest;

// What only the form of plain MQTT has: the payload format and the scripts.
class TestServerEditDialog : public FormTest
{
    Q_OBJECT
public:
    TestServerEditDialog()
        : FormTest("up", serverProtocolRole, "MQTT")
    {
    }
private slots:
    void storedFormatDecidesWhetherScriptsAreLive_data();
    void storedFormatDecidesWhetherScriptsAreLive();
    void choosingAFormatSwitchesTheScripts();
    void onlyTheScriptsAreLocked();
    void lockedScriptsAreKeptAndSaved();
    void replaceItemSwitchesTheScripts();
    void scriptsAreHighlighted();
    void scriptsAreStoredAsTheyStand();
    void whatCannotBeTyped_data();
    void whatCannotBeTyped();
    void formatsAreShownInTheUsersLanguage();

private:
    bool scriptsAreLive(const QWidget &form) const
    {
        const bool report = find<QTextEdit>(form, "reportJS")->isEnabled();
        const bool write = find<QTextEdit>(form, "writeJS")->isEnabled();
        [&] { QCOMPARE(report, write); }();
        return report;
    }
    static QRadioButton *format(const QWidget &form, int number)
    {
        return form.findChild<QRadioButton *>(QString("payloadFormat%1").arg(number));
    }
};

void TestServerEditDialog::storedFormatDecidesWhetherScriptsAreLive_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("checked");
    QTest::newRow("unset") << QVariant() << 1;
    QTest::newRow("0") << QVariant(0) << 1;
    QTest::newRow("1") << QVariant(1) << 1;
    QTest::newRow("2") << QVariant(2) << 2;
    QTest::newRow("3") << QVariant(3) << 1;
    QTest::newRow("text 1 of a document") << QVariant("1") << 1;
    QTest::newRow("text 2 of a document") << QVariant("2") << 2;
    QTest::newRow("empty text") << QVariant(QString()) << 1;
    QTest::newRow("other text") << QVariant("custom") << 1;
}

void TestServerEditDialog::storedFormatDecidesWhetherScriptsAreLive()
{
    QFETCH(QVariant, stored);
    QFETCH(int, checked);
    m_item->setData(stored, serverPayloadFormatRole);
    const ServerEditDialog opened(m_item, nullptr);
    QCOMPARE(format(opened, 1)->isChecked(), checked == 1);
    QCOMPARE(format(opened, 2)->isChecked(), checked == 2);
    QCOMPARE(scriptsAreLive(opened), checked == 2);
    // A form that showed the other format.
    QStandardItem *other = addItem("other");
    other->setData(3 - checked, serverPayloadFormatRole);
    ServerEditDialog rebound(other, nullptr);
    rebound.replaceItem(m_item);
    QCOMPARE(format(rebound, checked)->isChecked(), true);
    QCOMPARE(scriptsAreLive(rebound), checked == 2);
    rebound.saveChanges();
    QCOMPARE(m_item->data(serverPayloadFormatRole), QVariant(checked));
    QCOMPARE(m_item->data(serverPayloadFormatRole).type(), QVariant::Int);
}

void TestServerEditDialog::choosingAFormatSwitchesTheScripts()
{
    ServerEditDialog form(m_item, nullptr);
    for (int round = 0; round < 2; ++round) {
        format(form, 2)->click();
        QVERIFY(scriptsAreLive(form));
        format(form, 2)->click();
        QVERIFY(scriptsAreLive(form));
        format(form, 1)->click();
        QVERIFY(!scriptsAreLive(form));
    }
}

void TestServerEditDialog::onlyTheScriptsAreLocked()
{
    ServerEditDialog form(m_item, nullptr);
    for (int number : {1, 2}) {
        format(form, number)->click();
        for (const char *name :
             {"ip", "port", "clientId", "username", "password", "reportTopic", "writeTopic"}) {
            QVERIFY2(edit(form, name)->isEnabled(), name);
            QVERIFY2(!edit(form, name)->isReadOnly(), name);
        }
        QVERIFY(list(form, "qos")->isEnabled());
    }
}

void TestServerEditDialog::lockedScriptsAreKeptAndSaved()
{
    m_item->setData(2, serverPayloadFormatRole);
    m_item->setData("return 1", serverReportJsRole);
    m_item->setData("return 2", serverWriteJsRole);
    ServerEditDialog form(m_item, nullptr);
    find<QTextEdit>(form, "reportJS")->setPlainText("return 3");
    format(form, 1)->click();
    QVERIFY(!scriptsAreLive(form));
    QCOMPARE(find<QTextEdit>(form, "reportJS")->toPlainText(), "return 3");
    QCOMPARE(find<QTextEdit>(form, "writeJS")->toPlainText(), "return 2");
    form.saveChanges();
    QCOMPARE(m_item->data(serverPayloadFormatRole), QVariant(1));
    QCOMPARE(m_item->data(serverReportJsRole), QVariant("return 3"));
    QCOMPARE(m_item->data(serverWriteJsRole), QVariant("return 2"));
}

void TestServerEditDialog::replaceItemSwitchesTheScripts()
{
    QStandardItem *custom = addItem("custom");
    custom->setData(2, serverPayloadFormatRole);
    custom->setData("report", serverReportJsRole);
    ServerEditDialog form(m_item, nullptr);
    QVERIFY(!scriptsAreLive(form));
    form.replaceItem(custom);
    QVERIFY(format(form, 2)->isChecked());
    QVERIFY(scriptsAreLive(form));
    QCOMPARE(find<QTextEdit>(form, "reportJS")->toPlainText(), "report");
    form.replaceItem(m_item);
    QVERIFY(format(form, 1)->isChecked());
    QVERIFY(!scriptsAreLive(form));
    QCOMPARE(find<QTextEdit>(form, "reportJS")->toPlainText(), QString());
}

void TestServerEditDialog::scriptsAreHighlighted()
{
    const ServerEditDialog form(m_item, nullptr);
    for (const char *name : {"reportJS", "writeJS"}) {
        const auto *script = find<QTextEdit>(form, name);
        QCOMPARE(script->document()->findChildren<JavaScriptHighlighter *>().size(), 1);
    }
}

void TestServerEditDialog::scriptsAreStoredAsTheyStand()
{
    const QString script = "var 电 = \"<b>1</b>\"; // 100 %1\n\n\treturn 电;\n";
    m_item->setData(2, serverPayloadFormatRole);
    m_item->setData(script, serverReportJsRole);
    ServerEditDialog form(m_item, nullptr);
    QCOMPARE(find<QTextEdit>(form, "reportJS")->toPlainText(), script);
    find<QTextEdit>(form, "writeJS")->setPlainText(script);
    form.saveChanges();
    QCOMPARE(m_item->data(serverReportJsRole), QVariant(script));
    QCOMPARE(m_item->data(serverWriteJsRole), QVariant(script));
}

void TestServerEditDialog::whatCannotBeTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const auto add = [](const char *name, const char *what, const QString &typed, const QString &shown) {
        QTest::addRow("%s: %s", name, what) << typed << shown;
    };
    add("ip", "dotted", "192.168.1.70", "192.168.1.70");
    add("ip", "host", "mqtt.example.com", "mqtt.example.com");
    add("ip", "others", "a_b /c", "abc");
    add("port", "minus", "-", "-");
    add("port", "-1", "-1", "-1");
    add("port", "letters", "1x8y8z3", "1883");
    for (const char *name : {"clientId", "username", "password", "reportTopic", "writeTopic"}) {
        add(name, "Chinese", "a电b", "ab");
        add(name, "Western European", "Zähler/#", "Zähler/#");
    }
}

void TestServerEditDialog::whatCannotBeTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    const QString name = QString::fromLatin1(QTest::currentDataTag()).section(QLatin1Char(':'), 0, 0);
    const ServerEditDialog form(m_item, nullptr);
    QLineEdit *input = edit(form, name.toLatin1());
    typeInto(input, typed);
    QCOMPARE(input->text(), shown);
}

void TestServerEditDialog::formatsAreShownInTheUsersLanguage()
{
    const Marked marked;
    const ServerEditDialog form(m_item, nullptr);
    QCOMPARE(format(form, 1)->text(), "*Tarnwick MQTT");
    QCOMPARE(format(form, 2)->text(), "*Custom formatting");
}

QTEST_MAIN(TestServerEditDialog)
#include "tst_servereditdialog.moc"

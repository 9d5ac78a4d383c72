#include "pointformtest.h"
#include "servers/serverhj212editdialog.h"
#include "workspacefake.h"

#include <QRegExpValidator>
#include <QRegularExpressionValidator>
#include <QTranslator>

using namespace PointFormTest;

// The form of an HJ212 server.
class TestServerHJ212EditDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void fieldsInTheirOrder();
    void openingWritesTheCommandCodeOnly();
    void storedCommandCodeStays();
    void systemCodes_data();
    void systemCodes();
    void systemCodesAreTwentyAndDiffer_data() { catalogues(); }
    void systemCodesAreTwentyAndDiffer();
    void unknownSystemCodeShowsTheFirst_data();
    void unknownSystemCodeShowsTheFirst();
    void typing_data();
    void typing();
    void validatorsOfTheNewerKind();
    void factorCode_data();
    void factorCode();
    void importedPointHasNoFactorCode();
    void pointThatIsThereIsTold_data();
    void pointThatIsThereIsTold();
    void saveWritesEveryRole();
    void saveChecksNothing();
    void replaceItemShowsTheOther();
    void clearDataEmptiesTheForm();
    void thousandPointsComeBack();

private:
    QStandardItem *m_item = nullptr;
    WorkspaceFake *m_workspace = nullptr;
};

namespace {

const QString source = "Meter A";

const struct {
    int code;
    const char *text;
} codes[] = {
    {21, "Surface water quality testing"},
    {22, "Air quality testing"},
    {23, "Acoustic environment quality testing"},
    {24, "Groundwater quality testing"},
    {25, "Soil quality testing"},
    {26, "Sea water quality testing"},
    {27, "Volatile organic compound detection"},
    {31, "Air pollution sources"},
    {32, "Surface water pollution sources"},
    {33, "Groundwater environmental pollution sources"},
    {34, "Marine environmental pollution sources"},
    {35, "Soil environmental pollution sources"},
    {36, "Sources of acoustic environmental pollution"},
    {37, "Vibration environmental pollution sources"},
    {38, "Radioactive environmental pollution source"},
    {39, "Construction site dust pollution source"},
    {41, "Electromagnetic environmental pollution sources"},
    {51, "Monitoring of flue gas emission process"},
    {52, "Monitoring of sewage discharge process"},
    {91, "system interaction"},
};

QLineEdit *factor(const QWidget &form, int row)
{
    return qobject_cast<QLineEdit *>(pointTable(form)->cellWidget(row, 2));
}

} // namespace

void TestServerHJ212EditDialog::init()
{
    m_item = new QStandardItem("Platform");
    m_item->setData("HJ212", serverProtocolRole);
    m_workspace = new WorkspaceFake;
}

void TestServerHJ212EditDialog::cleanup()
{
    delete m_workspace;
    delete m_item;
}

void TestServerHJ212EditDialog::fieldsInTheirOrder()
{
    const ServerHJ212EditDialog form(m_item, m_workspace);
    QCOMPARE(inputs(form),
             (QStringList{"Server Name:|name", "Protocol:|protocol", "IP Address:|ip", "Port:|port",
                          "Client ID:|clientId", "Password:|password", "System Code:|systemCode",
                          "Command Code:|commandCode"}));
    QVERIFY(edit(form, "name")->isReadOnly());
    QCOMPARE(edit(form, "name")->text(), "Platform");
    QVERIFY(!list(form, "protocol")->isEnabled());
    QCOMPARE(list(form, "protocol")->count(), 1);
    QCOMPARE(list(form, "protocol")->currentText(), "HJ212");
    QCOMPARE(edit(form, "password")->echoMode(), QLineEdit::Password);
    QCOMPARE(headers(pointTable(form)), (QStringList{"PLC Name", "Name", "Factor Code"}));
}

void TestServerHJ212EditDialog::openingWritesTheCommandCodeOnly()
{
    auto expected = rolesOf(*m_item);
    expected.insert(serverCommandCodeRole, "2011");
    const ServerHJ212EditDialog form(m_item, nullptr);
    QCOMPARE(rolesOf(*m_item), expected);
    QCOMPARE(edit(form, "commandCode")->text(), "2011");
}

void TestServerHJ212EditDialog::storedCommandCodeStays()
{
    m_item->setData("2051", serverCommandCodeRole);
    const ServerHJ212EditDialog form(m_item, nullptr);
    QCOMPARE(edit(form, "commandCode")->text(), "2051");
    QCOMPARE(m_item->data(serverCommandCodeRole), QVariant("2051"));
}

void TestServerHJ212EditDialog::systemCodes_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("code");
    int place = 0;
    for (const auto &entry : codes) {
        QTest::newRow(entry.text) << place++ << entry.code;
    }
}

void TestServerHJ212EditDialog::systemCodes()
{
    QFETCH(int, place);
    QFETCH(int, code);
    ServerHJ212EditDialog form(m_item, m_workspace);
    QComboBox *entries = list(form, "systemCode");
    QCOMPARE(entries->itemText(place), QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(entries->itemData(place), QVariant(code));
    entries->setCurrentIndex(place);
    press(form, "saveButton");
    QCOMPARE(m_item->data(serverSystemCodeRole), QVariant(code));
    QCOMPARE(m_item->data(serverSystemCodeRole).type(), QVariant::Int);
    entries->setCurrentIndex(place == 0 ? 1 : 0);
    form.replaceItem(m_item);
    QCOMPARE(entries->currentIndex(), place);
    m_item->setData(QString::number(code), serverSystemCodeRole); // as a document gives it
    const ServerHJ212EditDialog loaded(m_item, m_workspace);
    QCOMPARE(list(loaded, "systemCode")->currentIndex(), place);
}

void TestServerHJ212EditDialog::systemCodesAreTwentyAndDiffer()
{
    QFETCH(QString, catalogue);
    QTranslator language;
    QVERIFY(language.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&language));
    const ServerHJ212EditDialog form(m_item, m_workspace);
    QSet<QString> texts;
    for (int index = 0; index < list(form, "systemCode")->count(); ++index) {
        texts.insert(list(form, "systemCode")->itemText(index));
    }
    QCOMPARE(list(form, "systemCode")->count(), 20);
    QCOMPARE(texts.size(), 20);
}

void TestServerHJ212EditDialog::unknownSystemCodeShowsTheFirst_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::newRow("unset") << QVariant();
    QTest::newRow("not in the list") << QVariant(28);
    QTest::newRow("no number") << QVariant("water");
}

void TestServerHJ212EditDialog::unknownSystemCodeShowsTheFirst()
{
    QFETCH(QVariant, stored);
    m_item->setData(91, serverSystemCodeRole);
    ServerHJ212EditDialog form(m_item, m_workspace);
    QStandardItem other;
    other.setData(stored, serverSystemCodeRole);
    form.replaceItem(&other);
    QCOMPARE(list(form, "systemCode")->currentData(), QVariant(21));
    const ServerHJ212EditDialog opened(&other, m_workspace);
    QCOMPARE(list(opened, "systemCode")->currentData(), QVariant(21));
}

void TestServerHJ212EditDialog::typing_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    const auto add = [](const char *name, const char *field, const QString &typed, const QString &taken) {
        QTest::newRow(name) << QString::fromLatin1(field) << typed << taken;
    };
    add("client in small letters", "clientId", "abc", QString());
    add("client in capital letters", "clientId", "ABC", "ABC");
    add("client with a G", "clientId", "0AG9", "0A9");
    add("client of 25 digits", "clientId", QString(25, QLatin1Char('7')), QString(24, QLatin1Char('7')));
    add("address", "ip", "192.168.1.10", "192.168.1.10");
    add("address part over 255", "ip", "256", "25");
    add("address by name", "ip", "host", QString());
    add("port of -1", "port", "-1", "-1");
    add("port of six digits", "port", "655350", "65535");
    add("password", "password", "p\u00e4ss 1", "p\u00e4ss 1");
    add("Chinese password", "password", "a\u5bc6b", "ab");
    add("free command code", "commandCode", "x-\u4ee4", "x-\u4ee4");
}

void TestServerHJ212EditDialog::typing()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    const ServerHJ212EditDialog form(m_item, m_workspace);
    auto *input = form.findChild<QLineEdit *>(field);
    input->clear();
    for (const QChar &letter : typed) {
        QTest::sendKeyEvent(QTest::Click, input, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
    QCOMPARE(input->text(), taken);
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
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole), (RowList{{source, "flow", taken}}));
}

void TestServerHJ212EditDialog::importedPointHasNoFactorCode()
{
    ServerHJ212EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("flow"), point("level")}, source);
    QCOMPARE(pointTable(form)->rowCount(), 2);
    for (int column = 0; column < 2; ++column) {
        const QTableWidgetItem *cell = pointTable(form)->item(0, column);
        QVERIFY(!(cell->flags() & Qt::ItemIsEditable));
        QCOMPARE(cell->toolTip(), cell->text());
    }
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole),
             (RowList{pointRow("Meter A", "flow", ""), pointRow("Meter A", "level", "")}));
}

void TestServerHJ212EditDialog::pointThatIsThereIsTold_data()
{
    QTest::addColumn<QString>("plc");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("refused");
    QTest::newRow("same source and name") << source << "flow" << true;
    QTest::newRow("other source") << "Meter B"
                                  << "flow" << false;
    QTest::newRow("other name") << source << "Flow" << false;
}

void TestServerHJ212EditDialog::pointThatIsThereIsTold()
{
    QFETCH(QString, plc);
    QFETCH(QString, name);
    QFETCH(bool, refused);
    ServerHJ212EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("flow")}, source);
    factor(form, 0)->setText("w1");
    form.handleImportedData({point(name, "float"), point("next")}, plc);
    QCOMPARE(m_workspace->messages,
             refused ? QStringList("The data with device name '% 2' and variable name '% 1' already exists.")
                     : QStringList());
    press(form, "saveButton");
    RowList expected{pointRow("Meter A", "flow", "w1")};
    if (!refused) {
        expected.append({plc, name, QString(QLatin1String(""))});
    }
    expected.append({plc, "next", QString(QLatin1String(""))});
    QCOMPARE(rowsOf(*m_item, serverPointsRole), expected);
}

void TestServerHJ212EditDialog::saveWritesEveryRole()
{
    m_item->setData(
        QVariant::fromValue(RowList{pointRow("Meter A", "flow", "w01018"), pointRow("Pump", "ph", "")}),
        serverPointsRole);
    ServerHJ212EditDialog form(m_item, m_workspace);
    edit(form, "ip")->setText("10.1.2.3");
    edit(form, "port")->setText("9001");
    edit(form, "clientId")->setText("0A1B");
    edit(form, "password")->setText("secret");
    list(form, "systemCode")->setCurrentIndex(8);
    edit(form, "commandCode")->setText("2051");
    factor(form, 1)->setText("w01001");
    press(form, "saveButton");
    QMap<int, QVariant> expected;
    expected.insert(serverProtocolRole, "HJ212");
    expected.insert(serverIpRole, "10.1.2.3");
    expected.insert(serverPortRole, "9001");
    expected.insert(serverClientIdRole, "0A1B");
    expected.insert(serverPasswordRole, "secret");
    expected.insert(serverSystemCodeRole, 32);
    expected.insert(serverCommandCodeRole, "2051");
    QCOMPARE(rowsOf(*m_item, serverPointsRole),
             (RowList{pointRow("Meter A", "flow", "w01018"), pointRow("Pump", "ph", "w01001")}));
    auto roles = rolesOf(*m_item);
    roles.remove(serverPointsRole);
    QCOMPARE(roles, expected);
    QCOMPARE(m_item->text(), "Platform");
    QCOMPARE(m_workspace->messages, QStringList("The Server HJ212 'Platform' is saved successfully."));
}

void TestServerHJ212EditDialog::saveChecksNothing()
{
    ServerHJ212EditDialog form(m_item, m_workspace);
    edit(form, "ip")->setText("10.1.");
    press(form, "saveButton");
    QCOMPARE(m_item->data(serverIpRole), QVariant("10.1."));
    QCOMPARE(m_item->data(serverSystemCodeRole), QVariant(21));
}

void TestServerHJ212EditDialog::replaceItemShowsTheOther()
{
    m_item->setData(QVariant::fromValue(RowList{pointRow("a", "b", "c"), pointRow("d", "e", "f")}),
                    serverPointsRole);
    ServerHJ212EditDialog form(m_item, m_workspace);
    QStandardItem other("Second");
    other.setData("1.2.3.4", serverIpRole);
    other.setData("77", serverPortRole);
    other.setData("FF", serverClientIdRole);
    other.setData("word", serverPasswordRole);
    other.setData(52, serverSystemCodeRole);
    other.setData(QVariant::fromValue(RowList{pointRow("g", "h", "i")}), serverPointsRole);
    form.replaceItem(&other);
    QCOMPARE(textsOf(form, {"name", "ip", "port", "clientId", "password", "commandCode"}),
             (QStringList{"Second", "1.2.3.4", "77", "FF", "word", "2011"}));
    QCOMPARE(list(form, "systemCode")->currentData(), QVariant(52));
    press(form, "saveButton");
    QCOMPARE(rowsOf(other, serverPointsRole), RowList{pointRow("g", "h", "i")});
    QCOMPARE(rowsOf(*m_item, serverPointsRole).size(), 2);
}

void TestServerHJ212EditDialog::clearDataEmptiesTheForm()
{
    m_item->setData(91, serverSystemCodeRole);
    m_item->setData("1.2.3.4", serverIpRole);
    m_item->setData(QVariant::fromValue(RowList{pointRow("a", "b", "c")}), serverPointsRole);
    ServerHJ212EditDialog form(m_item, m_workspace);
    form.clearData();
    QCOMPARE(textsOf(form, {"name", "ip", "port", "clientId", "password", "commandCode"}).join(QString()),
             QString());
    QCOMPARE(list(form, "systemCode")->currentIndex(), 0);
    QCOMPARE(pointTable(form)->rowCount(), 0);
    QCOMPARE(m_item->data(serverSystemCodeRole), QVariant(91));
}

void TestServerHJ212EditDialog::thousandPointsComeBack()
{
    RowList stored;
    for (int number = 0; number < 1000; ++number) {
        stored.append({source, QString("p%1").arg(number), QString("w%1").arg(number)});
    }
    comparePointsAfterSave<ServerHJ212EditDialog>(m_item, stored);
}

QTEST_MAIN(TestServerHJ212EditDialog)
#include "tst_serverhj212editdialog.moc"

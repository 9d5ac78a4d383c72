#include "model/itemroles.h"
#include "parameters/parametervariant.h"
#include "standardformtest.h"
#include "tableform.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItem>
#include <QTableWidget>
#include <QtTest>

// Field by field and list by list: the forms of Standards with a table of rows.
class TestStandardTableFields : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardTableFields()
        : StandardFormTest("Yard", "DIDO")
    {
    }
private slots:
    void listsHaveTheirEntries_data();
    void listsHaveTheirEntries();
    void saveWritesEveryRole_data();
    void saveWritesEveryRole();
};

void TestStandardTableFields::listsHaveTheirEntries_data()
{
    QTest::addColumn<QByteArray>("protocol");
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("entries");
    const QStringList flag{"true", "false"};
    const QStringList permissions{"r", "rw"};
    const QStringList methods{"Timed", "Change"};
    QTest::newRow("CustomPoll, HEX") << QByteArray("CustomPoll") << 1 << flag;
    QTest::newRow("CustomPoll, CRC") << QByteArray("CustomPoll") << 3 << flag;
    QTest::newRow("CustomPoll, permissions") << QByteArray("CustomPoll") << 4 << permissions;
    QTest::newRow("CustomPoll, method") << QByteArray("CustomPoll") << 5 << methods;
    QTest::newRow("DIDO, permissions") << QByteArray("DIDO") << 2 << permissions;
    QTest::newRow("DIDO, method") << QByteArray("DIDO") << 3 << methods;
    QTest::newRow("OpcUA, node") << QByteArray("OpcUA") << 3
                                 << QStringList{"GUID Node", "Numerical Node", "String Node"};
    QTest::newRow("OpcUA, permissions") << QByteArray("OpcUA") << 4 << permissions;
    QTest::newRow("OpcUA, method") << QByteArray("OpcUA") << 5 << methods + QStringList{"Change amplitude"};
    QTest::newRow("OpcUA, type") << QByteArray("OpcUA") << 9
                                 << ParameterVariant::opcUa().entries(ParameterCell::Type);
}

void TestStandardTableFields::listsHaveTheirEntries()
{
    QFETCH(QByteArray, protocol);
    QFETCH(int, column);
    QFETCH(QStringList, entries);
    const StandardTableFormPtr form = makeTableForm(protocol, m_item, m_workspace);
    form->addParameter();
    const auto *choice = qobject_cast<QComboBox *>(form->findChild<QTableWidget *>()->cellWidget(0, column));
    QVERIFY(choice);
    QCOMPARE(entriesOf(choice), entries);
}

void TestStandardTableFields::saveWritesEveryRole_data()
{
    QTest::addColumn<QByteArray>("protocol");
    QTest::addColumn<QByteArray>("field"); // to be filled
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("value");
    const auto serial = [](const char *field, int role, const QVariant &value) {
        QTest::addRow("CustomPoll, %s", field)
            << QByteArray("CustomPoll") << QByteArray(field) << role << value;
    };
    serial("serialport", standardSerialPortRole, "COM2");
    serial("baudRate", standardBaudRateRole, "9600");
    serial("dataBit", standardDataBitRole, "7");
    serial("stopBit", standardStopBitRole, "2");
    serial("parityBit", standardParityBitRole, "ODD");
    serial("rtsEnable", standardRtsEnableRole, true);
    serial("communicationTimeout", standardCommunicationTimeoutRole, "900");
    serial("communicationGap", standardCommunicationGapRole, "20");
    const auto client = [](const char *field, int role, const QVariant &value) {
        QTest::addRow("OpcUA, %s", field) << QByteArray("OpcUA") << QByteArray(field) << role << value;
    };
    client("url", standardUrlRole, "opc.tcp://10.0.0.9:4840");
    client("securityPolicy", standardSecurityPolicyRole, "Basic256Sha256");
    client("messageSecurityMode", standardMessageSecurityModeRole, "SignAndEncrypt");
    client("authentication", standardAuthenticationRole, "Username and password verification");
    client("username", standardUsernameRole, "operator");
    client("password", standardPasswordRole, "secret");
    for (const char *protocol : {"CustomPoll", "DIDO", "OpcUA"}) {
        const auto any = [protocol](const char *field, int role, const QVariant &value) {
            QTest::addRow("%s, %s", protocol, field)
                << QByteArray(protocol) << QByteArray(field) << role << value;
        };
        any("name", Qt::DisplayRole, "Renamed");
        any("protocol", standardProtocolRole, protocol);
        any("collectionInterval", standardCollectionIntervalRole, "500");
    }
}

void TestStandardTableFields::saveWritesEveryRole()
{
    QFETCH(QByteArray, protocol);
    QFETCH(QByteArray, field);
    QFETCH(int, role);
    QFETCH(QVariant, value);
    const StandardTableFormPtr form = makeTableForm(protocol, m_item, m_workspace);
    if (QCheckBox *flag = check(*form, field)) {
        flag->setChecked(value.toBool());
    } else if (QComboBox *choice = list(*form, field)) {
        choice->setCurrentText(value.toString());
    } else {
        edit(*form, field)->setText(value.toString());
    }
    form->saveButton()->click();
    QCOMPARE(m_item->data(role), value);
    QCOMPARE(m_workspace->messages.size(), 1);
    // And from there into another form.
    const StandardTableFormPtr again = makeTableForm(protocol, m_item, m_workspace);
    again->saveChanges();
    QCOMPARE(m_item->data(role), value);
}

QTEST_MAIN(TestStandardTableFields)
#include "tst_standardtablefields.moc"

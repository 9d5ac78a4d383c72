#include "definitions/values.h"

#include "definitions/plccatalogue.h"
#include "model/itemroles.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QtTest>

using namespace Definitions;

class TestValues : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void everyRoleHasARow();
    void rolesWithSeveralRows();
    void valuesThatAreNotSaved();
    void keysOfASubKindDiffer();
    void rowsAreFoundByRole_data();
    void rowsAreFoundByRole();
    void rowIsOfTheSubKind();
    void defaults();
    void standardKinds_data();
    void standardKinds();
    void serverKinds_data();
    void serverKinds();
    void readingThatDiffersFromWriting();

private:
    QString nameOf(Kind kind, int role) const { return m_names.value({kind, role}); }

    QMap<QPair<Kind, int>, QString> m_names; // of the enumerators
};

namespace {

const struct {
    const char *prefix; // of the roles
    Kind kind;
} kinds[] = {
    {"project", Kind::Project}, {"box", Kind::Box},       {"standard", Kind::Standard},
    {"service", Kind::Service}, {"server", Kind::Server}, {"plc", Kind::Plc},
};

// Of no table: the path is where the file lies, and live values are no part of a project.
const QStringList withoutRow = {
    "projectPathRole",
    "dataRowsRole",
    "dataDisplayRole",
};

// What a form writes into an empty role.
const struct {
    const char *role;
    const char *value;
} defaultValues[] = {
    {"plcAbSlotRole", "0"},
    {"plcCollectionIntervalRole", "2000"},
    {"plcCommunicationGapRole", "-1"},
    {"plcConnectionTimeoutRole", "2000"},
    {"plcDeltaStationNumRole", "1"},
    {"plcDf1SourceNodeRole", "1"},
    {"plcDf1StationNumRole", "1"},
    {"plcDf1TargetNodeRole", "2"},
    {"plcFinsUnitNumberRole", "0"},
    {"plcFxLinksMessageWaitingTimeRole", "1"},
    {"plcFxLinksStationNumRole", "0"},
    {"plcFxLinksSumCheckRole", "true"},
    {"plcFxSerialNewAgreementRole", "true"},
    {"plcHostLinkDeviceIdNumRole", "0"},
    {"plcHostLinkHostcomputerUnitRole", "0"},
    {"plcHostLinkPlcUnitRole", "0"},
    {"plcHostLinkStationNumRole", "0"},
    {"plcInovanceStartAddress0Role", "true"},
    {"plcInovanceStationNumRole", "1"},
    {"plcIpRole", "192.168.1.60"},
    {"plcKeepAliveRole", "60000"},
    {"plcMc1eBinaryRole", "true"},
    {"plcMc1eStationNumRole", "FF"},
    {"plcMc3cStationNumRole", "2"},
    {"plcMc3cSumCheckRole", "true"},
    {"plcMc3cWriteBitByWordRole", "true"},
    {"plcMc3eBinaryRole", "true"},
    {"plcMc3eNetNumRole", "0"},
    {"plcMc3eStationNumRole", "0"},
    {"plcMc3eWriteBitByWordRole", "true"},
    {"plcMitsubishiEipSlotRole", "0"},
    {"plcModbusStartAddress0Role", "true"},
    {"plcModbusStationNumRole", "1"},
    {"plcOmronEipModelRole", "omron-njnx"},
    {"plcOmronEipSlotRole", "0"},
    {"plcPpiStationNumRole", "2"},
    {"plcS7ConnectionTypeRole", "1"},
    {"plcS7DestTsapRole", "4D57"},
    {"plcS7LocalTsapRole", "4D57"},
    {"plcS7RackRole", "0"},
    {"plcS7SlotRole", "0"},
    {"plcSerialCommunicationTimeoutRole", "2000"},
    {"plcTcpCommunicationTimeoutRole", "2000"},
    {"plcXinjeStartAddress0Role", "true"},
    {"plcXinjeStationNumRole", "1"},
    {"serverCommandCodeRole", "2011"},
    {"servicePortRole", "102"},
    {"standardCollectionIntervalRole", "2000"},
    {"standardCommunicationGapRole", "-1"},
    {"standardCommunicationTimeoutRole", "2000"},
    {"standardConnectionTimeoutRole", "2000"},
    {"standardIpRole", "192.168.1.60"},
    {"standardKeepAliveRole", "60000"},
    {"standardPortRole", "502"},
    {"standardRtuCommunicationTimeoutRole", "2000"},
};

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

void TestValues::initTestCase()
{
    QFile header(QString(SOURCE_ROOT "/src/model/itemroles.h"));
    QVERIFY(header.open(QIODevice::ReadOnly));
    static const QRegularExpression row("^    (([a-z]+)\\w*Role) = Qt::UserRole \\+ (\\d+),",
                                        QRegularExpression::MultilineOption);
    QStringList unknown;
    for (auto match = row.globalMatch(text(header.readAll())); match.hasNext();) {
        const auto found = match.next();
        const auto kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const auto &each) {
            return found.captured(2) == QLatin1String(each.prefix);
        });
        if (kind == std::end(kinds)) {
            unknown.append(found.captured(1));
        } else {
            m_names.insert({kind->kind, Qt::UserRole + found.captured(3).toInt()}, found.captured(1));
        }
    }
    QCOMPARE(unknown, withoutRow.mid(1));
    QCOMPARE(m_names.size() + unknown.size(), 208);
}

void TestValues::everyRoleHasARow()
{
    QStringList missing;
    for (auto it = m_names.cbegin(); it != m_names.cend(); ++it) {
        if (!find(it.key().first, it.key().second)) {
            missing.append(it.value());
        }
    }
    QCOMPARE(missing, withoutRow.mid(0, 1));

    for (const auto &each : kinds) {
        for (const Value &value : values(each.kind)) {
            const bool isConstant = value.coding == Coding::Constant;
            QVERIFY2(nameOf(each.kind, value.role).isEmpty() == isConstant, value.key);
        }
    }
}

// Each further row is another sub-kind's, but for the model of an S7, which is written twice.
void TestValues::rolesWithSeveralRows()
{
    QMap<QString, QStringList> keys;
    for (const auto &each : kinds) {
        for (const Value &value : values(each.kind)) {
            if (value.role != noRole) {
                keys[nameOf(each.kind, value.role)].append(text(value.key));
            }
        }
    }
    QStringList several;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
        if (it->size() > 1) {
            several.append(it.key() + QLatin1String(": ") + it->join(QLatin1Char(' ')));
        }
    }
    QCOMPARE(several,
             QStringList({"plcModelRole: model model", "serverClientIdRole: clientId MN",
                          "serverPasswordRole: password PW passwd", "serverPointsRole: datas datas",
                          "standardDatasRole: datas datas datas datas datas"}));
}

void TestValues::valuesThatAreNotSaved()
{
    QStringList unsaved;
    for (const auto &each : kinds) {
        for (const Value &value : values(each.kind)) {
            if (value.coding == Coding::Unsaved) {
                unsaved.append(nameOf(each.kind, value.role));
            }
        }
    }
    // What a Box tells of itself, and a command code that the document has as a constant.
    QCOMPARE(unsaved.join(QLatin1Char(' ')),
             "boxModelRole boxAt1Role boxAt2Role boxAt3Role boxAt4Role boxAt5Role "
             "boxNtpServerRole boxTimeRole serverCommandCodeRole");
}

// But for the two lists of a Modbus TCP slave, which share an array.
void TestValues::keysOfASubKindDiffer()
{
    QStringList repeated;
    for (const auto &each : kinds) {
        for (unsigned bit = 1; bit != 0; bit <<= 1) {
            QSet<QString> met;
            for (const Value &value : values(each.kind)) {
                const QString key = QString::number(int(value.place)) + text(value.key);
                if ((value.subKinds & bit) && value.coding != Coding::Unsaved) {
                    if (met.contains(key)) {
                        repeated.append(nameOf(each.kind, value.role));
                    }
                    met.insert(key);
                }
            }
        }
    }
    QCOMPARE(repeated, QStringList("serverInputRegistersRole"));
}

void TestValues::rowsAreFoundByRole_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("key");
    QTest::newRow("project") << int(Kind::Project) << int(projectDescriptionRole) << "description";
    // One number, by the kind of the item.
    QTest::newRow("model of a Box") << int(Kind::Box) << int(boxModelRole) << "model";
    QTest::newRow("path") << int(Kind::Project) << int(projectPathRole) << QString();
    QTest::newRow("gateway") << int(Kind::Box) << int(boxLanGatewayRole) << "lanGateway";
    QTest::newRow("baud rate") << int(Kind::Standard) << int(standardBaudRateRole) << "baudRate";
    QTest::newRow("another kind's") << int(Kind::Plc) << int(standardBaudRateRole) << QString();
}

void TestValues::rowsAreFoundByRole()
{
    QFETCH(int, kind);
    QFETCH(int, role);
    QFETCH(QString, key);
    const Value *value = find(Kind(kind), role);
    QCOMPARE(value ? text(value->key) : QString(), key);
    QVERIFY(!value || &valueOf(Kind(kind), role) == value);
}

void TestValues::rowIsOfTheSubKind()
{
    QCOMPARE(text(valueOf(Kind::Server, serverPasswordRole).key), "password");
    QCOMPARE(text(valueOf(Kind::Server, serverPasswordRole, Hj212).key), "PW");
    QCOMPARE(text(valueOf(Kind::Server, serverPasswordRole, Sl651).key), "passwd");
    QVERIFY(!find(Kind::Server, serverPasswordRole, AliMqtt));
}

void TestValues::defaults()
{
    QMap<QString, QString> found;
    for (const auto &each : kinds) {
        for (const Value &value : values(each.kind)) {
            if (value.defaultValue && value.role != noRole) {
                found.insert(nameOf(each.kind, value.role), text(value.defaultValue));
            }
        }
    }
    QMap<QString, QString> expected;
    for (const auto &row : defaultValues) {
        expected.insert(text(row.role), text(row.value));
    }
    QCOMPARE(found, expected);
}

void TestValues::standardKinds_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<unsigned>("kind");
    const auto row = [](const char *protocol, const char *mode, StandardKind kind) {
        QTest::addRow("%s %s", protocol, mode) << text(protocol) << text(mode) << unsigned(kind);
    };
    row("Modbus", "ModbusTCP", ModbusTcp);
    row("Modbus", "ModbusRTU", ModbusRtu);
    row("Modbus", "", ModbusOther);
    row("Modbus", "modbusTCP", ModbusOther);
    row("DLT645", "", Meter);
    row("DLT645", "ModbusTCP", Meter);
    row("DIDO", "", Dido);
    row("CustomPoll", "", CustomPoll);
    row("OpcUA", "", OpcUa);
    row("modbus", "ModbusTCP", UnknownStandard);
    row("", "", UnknownStandard);
}

void TestValues::standardKinds()
{
    QFETCH(QString, protocol);
    QFETCH(QString, mode);
    QFETCH(unsigned, kind);
    QCOMPARE(standardKind(protocol, mode), kind);
}

void TestValues::serverKinds_data()
{
    QTest::addColumn<unsigned>("kind");
    QTest::newRow("MQTT") << unsigned(Mqtt);
    QTest::newRow("AliMQTT") << unsigned(AliMqtt);
    QTest::newRow("OneNetMQTT") << unsigned(OneNetMqtt);
    QTest::newRow("HuaWeiMQTT") << unsigned(HuaWeiMqtt);
    QTest::newRow("ModbusTCP(Slave)") << unsigned(ModbusSlave);
    QTest::newRow("HJ212") << unsigned(Hj212);
    QTest::newRow("SL651") << unsigned(Sl651);
    QTest::newRow("OpcUaServer") << unsigned(OpcUaServer);
    QTest::newRow("mqtt") << unsigned(UnknownServer);
    QTest::newRow("") << unsigned(UnknownServer);
}

void TestValues::serverKinds()
{
    QFETCH(unsigned, kind);
    QCOMPARE(serverKind(text(QTest::currentDataTag())), kind);
}

void TestValues::readingThatDiffersFromWriting()
{
    QStringList found;
    for (const auto &each : kinds) {
        for (const Value &value : values(each.kind)) {
            const QString name = nameOf(each.kind, value.role) + QLatin1Char(' ');
            if (value.readKey) {
                found.append(name + text(value.readKey));
            }
            if (value.roleIfOff != noRole) {
                found.append(name + nameOf(each.kind, value.roleIfOff));
            }
            if (value.readFor == 0) {
                found.append(name + QLatin1String("not read as ") + text(value.key));
            }
        }
    }
    QCOMPARE(found.join(QLatin1Char('\n')),
             "standardDatasRole not read as datas\n"
             "standardDatasRole not read as datas\n"
             "standardDatasRole not read as datas\n"
             "serverPasswordRole not read as passwd\n"
             "plcModelRole not read as model\n"
             "plcS7SlotRole slot\n"
             "plcMitsubishiEipSlotRole slot\n"
             "plcMc3eWriteBitByWordRole writebitByword\n"
             "plcOmronEipSlotRole slot\n"
             "plcAbSlotRole slot\n"
             "plcAdsAutoNetIdRole plcXinjeCharReversedRole");
}

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"

#include "language.h"
#include "readertest.h"

namespace {

// Every path to a value of the object, with the value put in its place ("undefined" takes the key away).
void replaceEach(const QJsonValue &value, const QJsonValue &replacement, const QString &path,
                 QVector<QPair<QString, QJsonValue>> *variants)
{
    const auto descend = [&](const QJsonValue &child, const QString &step, auto rebuild) {
        variants->append({path + step, rebuild(replacement)});
        QVector<QPair<QString, QJsonValue>> inner;
        replaceEach(child, replacement, path + step, &inner);
        for (const auto &variant : qAsConst(inner)) {
            variants->append({variant.first, rebuild(variant.second)});
        }
    };
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        descend(member.value(), QLatin1Char('/') + member.key(), [&](const QJsonValue &with) -> QJsonValue {
            QJsonObject copy = object;
            copy.insert(member.key(), with); // Inserting an undefined value removes the key.
            return copy;
        });
    }
    const QJsonArray array = value.toArray();
    for (int i = 0; i < array.size() && !replacement.isUndefined(); ++i) {
        descend(array.at(i), QString("/%1").arg(i), [&](const QJsonValue &with) -> QJsonValue {
            QJsonArray copy = array;
            copy.replace(i, with);
            return copy;
        });
    }
}

} // namespace

class TestProjectReader : public QObject
{
    Q_OBJECT
private slots:
    void boxFillsItsTwentyThreeRoles();
    void boxEmptiesWhatIsMissingAndLeavesTheRest();
    void serviceFillsItsRoles();
    void serviceEmptiesWhatIsMissing();
    void serviceAuthenticationIsTranslated_data() { addAuthenticationRows("None", "Password"); }
    void serviceAuthenticationIsTranslated();
    void wrongTypesReadAsMissing_data();
    void wrongTypesReadAsMissing();
};

void TestProjectReader::boxFillsItsTwentyThreeRoles()
{
    const QJsonObject box = parse(R"({"name": "B", "ip": "v0", "model": "unread", "ntpServer": "unread",
        "lanIp": "v115", "lanMask": "v116", "lanGateway": "v117", "lanDns1": "v118", "lanDns2": "v119",
        "wanDhcp": "v120", "wanIp": "v121", "wanMask": "v122", "wanGateway": "v123", "wanDns1": "v124",
        "wanDns2": "v125", "wifiOnOff": "v126", "wifiMode": "v127", "wifissid": "v128",
        "wifipassword": "v129", "wifiDhcp": "v130", "wifiIp": "v131", "wifiMask": "v132",
        "wifiGateway": "v133", "wifiDns1": "v134", "wifiDns2": "v135", "lteOnOff": "v136"})");
    QStringList expected{line(0, "v0")};
    for (int offset = 115; offset <= 136; ++offset) {
        expected.append(QString("+%1 QString v%1").arg(offset));
    }
    QCOMPARE(rolesAfter(transmitBoxData, box), expected);
}

void TestProjectReader::boxEmptiesWhatIsMissingAndLeavesTheRest()
{
    QStandardItem item("B");
    item.setData("10.0.0.1", boxIpRole);
    item.setData("MRN-70", boxModelRole);
    item.setData("AT+CGMR", boxAt1Role);
    item.setData("ntp", boxNtpServerRole);
    item.setData("12:00", boxTimeRole);
    transmitBoxData(QJsonObject(), &item);
    QCOMPARE(ProjectDump::roles(&item),
             QStringList({line(0, ""), line(1, "MRN-70")}) + lines(115, 136, "")
                 + QStringList({line(137, "AT+CGMR"), line(142, "ntp"), line(143, "12:00")}));
    QCOMPARE(item.text(), "B");
}

void TestProjectReader::serviceFillsItsRoles()
{
    QJsonObject extended = parse(R"({"authentication": "1", "password": "v174",
        "rootCertificate": "v178", "rootCertificatePath": "v177", "serverCertificate": "v180",
        "serverCertificatePath": "v179", "serverKey": "v182", "serverKeyPath": "v181",
        "serverKeyPassword": "v204"})");
    for (int slot = 1; slot <= 10; ++slot) {
        extended.insert(QString("clientCertificatePath%1").arg(slot), QString("v%1").arg(182 + 2 * slot));
        extended.insert(QString("clientCertificate%1").arg(slot), QString("v%1").arg(183 + 2 * slot));
    }
    QJsonObject service = parse(R"({"name": "IEC61850", "protocol": "v171", "port": "v172",
        "enableGoosePublishing": "v175", "enableSSL": "v176", "isVerifyClientCert": "v183"})");
    service.insert("extendedParameters", extended);
    QStringList expected;
    for (int offset = 171; offset <= 204; ++offset) {
        expected.append(offset == 173 ? line(173, "Password") : QString("+%1 QString v%1").arg(offset));
    }
    QCOMPARE(rolesAfter(transmitServiceData, service), expected);
}

void TestProjectReader::serviceEmptiesWhatIsMissing()
{
    QCOMPARE(rolesAfter(transmitServiceData, QJsonObject()), lines(171, 172, "") + lines(174, 204, ""));
    QCOMPARE(rolesOver(transmitServiceData, QJsonObject(), serviceProtocolRole, serviceServerKeyPasswordRole),
             lines(171, 172, "") + lines(173, 173, "old") + lines(174, 204, ""));
}

void TestProjectReader::serviceAuthenticationIsTranslated()
{
    QFETCH(QJsonValue, code);
    QFETCH(QString, text);
    QCOMPARE(authenticationAfter(transmitServiceData, code, serviceAuthenticationRole), text);
    const Language language("zh ");
    QCOMPARE(authenticationAfter(transmitServiceData, code, serviceAuthenticationRole),
             text == "old" ? text : "zh " + text);
}

void TestProjectReader::wrongTypesReadAsMissing_data()
{
    QTest::addColumn<QJsonValue>("wrong");
    QTest::newRow("number") << QJsonValue(7);
    QTest::newRow("null") << QJsonValue(QJsonValue::Null);
    QTest::newRow("boolean") << QJsonValue(true);
    QTest::newRow("empty array") << QJsonValue(QJsonArray());
    QTest::newRow("empty object") << QJsonValue(QJsonObject());
}

// A value of the wrong type in any place gives what the missing key gives; entries of arrays can't be missing
// and give what an empty object gives.
void TestProjectReader::wrongTypesReadAsMissing()
{
    QFETCH(QJsonValue, wrong);
    struct {
        Transmit transmit;
        QJsonObject object;
    } const cases[] = {
        {transmitStandardData, standardWith("Modbus", "ModbusRTU")},
        {transmitStandardData, standardWith("DLT645", QString())},
        {transmitStandardData, standardWith("OpcUA", QString())},
        {transmitServiceData, parse(R"({"protocol": "IEC61850", "port": "102", "enableSSL": "true",
            "extendedParameters": {"authentication": "1", "password": "p", "clientCertificate10": "c"}})")},
        {transmitBoxData, parse(R"({"ip": "10.0.0.1", "lteOnOff": "on", "wifissid": "s"})")},
    };
    for (const auto &entry : cases) {
        QVector<QPair<QString, QJsonValue>> variants;
        QVector<QPair<QString, QJsonValue>> missing;
        replaceEach(entry.object, wrong, QString(), &variants);
        replaceEach(entry.object, QJsonValue::Undefined, QString(), &missing);
        replaceEach(entry.object, QJsonObject(), QString(), &missing);
        QHash<QString, QJsonValue> without;
        for (const auto &variant : qAsConst(missing)) {
            if (!without.contains(variant.first)) {
                without.insert(variant.first, variant.second);
            }
        }
        for (const auto &variant : qAsConst(variants)) {
            QVERIFY(without.contains(variant.first));
            const QStringList found = rolesAfter(entry.transmit, variant.second.toObject());
            const QStringList expected = rolesAfter(entry.transmit, without.value(variant.first).toObject());
            QVERIFY2(found == expected, qPrintable(variant.first));
        }
    }
}

QTEST_GUILESS_MAIN(TestProjectReader)
#include "tst_projectreader.moc"

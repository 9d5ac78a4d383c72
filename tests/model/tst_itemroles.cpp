#include "model/itemroles.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

struct Role {
    int offset; // from Qt::UserRole
    const char *name;
    int number;
};

// clang-format off
#define ROLE(offset, name) {offset, #name, name}
const Role roles[] = {
    ROLE(1, projectPathRole),
    ROLE(2, projectDescriptionRole),
    ROLE(0, dataRowsRole),
    ROLE(1, dataDisplayRole),
    ROLE(0, boxIpRole),
    ROLE(1, boxModelRole),
    ROLE(115, boxLanIpRole),
    ROLE(116, boxLanMaskRole),
    ROLE(117, boxLanGatewayRole),
    ROLE(118, boxLanDns1Role),
    ROLE(119, boxLanDns2Role),
    ROLE(120, boxWanDhcpRole),
    ROLE(121, boxWanIpRole),
    ROLE(122, boxWanMaskRole),
    ROLE(123, boxWanGatewayRole),
    ROLE(124, boxWanDns1Role),
    ROLE(125, boxWanDns2Role),
    ROLE(126, boxWifiOnOffRole),
    ROLE(127, boxWifiModeRole),
    ROLE(128, boxWifiSsidRole),
    ROLE(129, boxWifiPasswordRole),
    ROLE(130, boxWifiDhcpRole),
    ROLE(131, boxWifiIpRole),
    ROLE(132, boxWifiMaskRole),
    ROLE(133, boxWifiGatewayRole),
    ROLE(134, boxWifiDns1Role),
    ROLE(135, boxWifiDns2Role),
    ROLE(136, boxLteOnOffRole),
    ROLE(137, boxAt1Role),
    ROLE(138, boxAt2Role),
    ROLE(139, boxAt3Role),
    ROLE(140, boxAt4Role),
    ROLE(141, boxAt5Role),
    ROLE(142, boxNtpServerRole),
    ROLE(143, boxTimeRole),
    ROLE(144, standardProtocolRole),
    ROLE(145, standardDatasRole),
    ROLE(146, standardCollectionIntervalRole),
    ROLE(147, standardSerialPortRole),
    ROLE(148, standardBaudRateRole),
    ROLE(149, standardDataBitRole),
    ROLE(150, standardStopBitRole),
    ROLE(151, standardParityBitRole),
    ROLE(152, standardRtsEnableRole),
    ROLE(153, standardCommunicationTimeoutRole),
    ROLE(154, standardCommunicationGapRole),
    ROLE(155, standardUrlRole),
    ROLE(156, standardSecurityPolicyRole),
    ROLE(157, standardMessageSecurityModeRole),
    ROLE(158, standardAuthenticationRole),
    ROLE(159, standardUsernameRole),
    ROLE(160, standardPasswordRole),
    ROLE(161, standardCertificateRole),
    ROLE(162, standardPrivateKeyRole),
    ROLE(163, standardCertificatePathRole),
    ROLE(164, standardPrivateKeyPathRole),
    ROLE(165, standardModbusModeRole),
    ROLE(166, standardIpRole),
    ROLE(167, standardPortRole),
    ROLE(168, standardConnectionTimeoutRole),
    ROLE(169, standardKeepAliveRole),
    ROLE(170, standardRtuCommunicationTimeoutRole),
    ROLE(171, serviceProtocolRole),
    ROLE(172, servicePortRole),
    ROLE(173, serviceAuthenticationRole),
    ROLE(174, servicePasswordRole),
    ROLE(175, serviceEnableGoosePublishingRole),
    ROLE(176, serviceEnableSslRole),
    ROLE(177, serviceRootCertificatePathRole),
    ROLE(178, serviceRootCertificateRole),
    ROLE(179, serviceServerCertificatePathRole),
    ROLE(180, serviceServerCertificateRole),
    ROLE(181, serviceServerKeyPathRole),
    ROLE(182, serviceServerKeyRole),
    ROLE(183, serviceIsVerifyClientCertRole),
    ROLE(184, serviceClientCertificatePath1Role),
    ROLE(185, serviceClientCertificate1Role),
    ROLE(186, serviceClientCertificatePath2Role),
    ROLE(187, serviceClientCertificate2Role),
    ROLE(188, serviceClientCertificatePath3Role),
    ROLE(189, serviceClientCertificate3Role),
    ROLE(190, serviceClientCertificatePath4Role),
    ROLE(191, serviceClientCertificate4Role),
    ROLE(192, serviceClientCertificatePath5Role),
    ROLE(193, serviceClientCertificate5Role),
    ROLE(194, serviceClientCertificatePath6Role),
    ROLE(195, serviceClientCertificate6Role),
    ROLE(196, serviceClientCertificatePath7Role),
    ROLE(197, serviceClientCertificate7Role),
    ROLE(198, serviceClientCertificatePath8Role),
    ROLE(199, serviceClientCertificate8Role),
    ROLE(200, serviceClientCertificatePath9Role),
    ROLE(201, serviceClientCertificate9Role),
    ROLE(202, serviceClientCertificatePath10Role),
    ROLE(203, serviceClientCertificate10Role),
    ROLE(204, serviceServerKeyPasswordRole),
    ROLE(3, serverDescriptionRole),
    ROLE(4, serverProtocolRole),
    ROLE(5, serverIpRole),
    ROLE(6, serverPortRole),
    ROLE(7, serverPayloadFormatRole),
    ROLE(8, serverReportTopicRole),
    ROLE(9, serverWriteTopicRole),
    ROLE(10, serverReportJsRole),
    ROLE(11, serverWriteJsRole),
    ROLE(12, serverClientIdRole),
    ROLE(13, serverUsernameRole),
    ROLE(14, serverPasswordRole),
    ROLE(15, serverQosRole),
    ROLE(16, serverDomainNameRole),
    ROLE(17, serverProductKeyRole),
    ROLE(18, serverDeviceNameRole),
    ROLE(19, serverDeviceSecretRole),
    ROLE(20, serverServiceIdRole),
    ROLE(21, serverSystemCodeRole),
    ROLE(22, serverCommandCodeRole),
    ROLE(23, serverPointsRole),
    ROLE(24, serverCentralStationAddressRole),
    ROLE(25, serverRemoteStationAddressRole),
    ROLE(26, serverRemoteStationTypeRole),
    ROLE(27, serverAnonymousRole),
    ROLE(28, serverTypeRole),
    ROLE(29, serverHoldingRegistersRole),
    ROLE(30, serverInputRegistersRole),
    ROLE(31, plcManufacturerRole),
    ROLE(32, plcProtocolRole),
    ROLE(33, plcIpRole),
    ROLE(34, plcPortRole),
    ROLE(35, plcConnectionTimeoutRole),
    ROLE(36, plcTcpCommunicationTimeoutRole),
    ROLE(37, plcKeepAliveRole),
    ROLE(38, plcModelRole),
    ROLE(39, plcSerialPortRole),
    ROLE(40, plcBaudRateRole),
    ROLE(41, plcDataBitRole),
    ROLE(42, plcStopBitRole),
    ROLE(43, plcParityBitRole),
    ROLE(44, plcRtsEnableRole),
    ROLE(45, plcSerialCommunicationTimeoutRole),
    ROLE(46, plcCommunicationGapRole),
    ROLE(47, plcPpiStationNumRole),
    ROLE(48, plcS7ConnectionTypeRole),
    ROLE(49, plcAbModelRole),
    ROLE(50, plcS7RackRole),
    ROLE(51, plcS7SlotRole),
    ROLE(52, plcS7LocalTsapRole),
    ROLE(53, plcS7DestTsapRole),
    ROLE(54, plcCollectionIntervalRole),
    ROLE(55, plcMitsubishiEipSlotRole),
    ROLE(56, plcMc3cStationNumRole),
    ROLE(57, plcMc3cFormatRole),
    ROLE(58, plcMc3cSumCheckRole),
    ROLE(59, plcMc3cWriteBitByWordRole),
    ROLE(60, plcMc1eStationNumRole),
    ROLE(61, plcMc1eBinaryRole),
    ROLE(62, plcMc3eModeRole),
    ROLE(63, plcMc3eStationNumRole),
    ROLE(64, plcMc3eNetNumRole),
    ROLE(65, plcMc3eBinaryRole),
    ROLE(66, plcMc3eWriteBitByWordRole),
    ROLE(67, plcMc3eCharReversedRole),
    ROLE(68, plcFxLinksStationNumRole),
    ROLE(69, plcFxLinksSumCheckRole),
    ROLE(70, plcFxLinksMessageWaitingTimeRole),
    ROLE(71, plcFxLinksFormatRole),
    ROLE(72, plcFxSerialNewAgreementRole),
    ROLE(73, plcFinsModeRole),
    ROLE(74, plcFinsUnitNumberRole),
    ROLE(75, plcFinsByteOrderRole),
    ROLE(76, plcFinsCharReversedRole),
    ROLE(77, plcOmronEipSlotRole),
    ROLE(78, plcOmronEipModelRole),
    ROLE(79, plcHostLinkStationNumRole),
    ROLE(80, plcHostLinkDeviceIdNumRole),
    ROLE(81, plcHostLinkPlcUnitRole),
    ROLE(82, plcHostLinkHostcomputerUnitRole),
    ROLE(83, plcHostLinkByteOrderRole),
    ROLE(84, plcHostLinkCharReversedRole),
    ROLE(85, plcAbSlotRole),
    ROLE(86, plcAbRouterRole),
    ROLE(87, plcDf1StationNumRole),
    ROLE(88, plcDf1TargetNodeRole),
    ROLE(89, plcDf1SourceNodeRole),
    ROLE(90, plcAdsAutoNetIdRole),
    ROLE(91, plcAdsTargetNetIdRole),
    ROLE(92, plcAdsSenderNetIdRole),
    ROLE(93, plcAdsTagCacheRole),
    ROLE(94, plcInovanceSeriesRole),
    ROLE(95, plcInovanceStationNumRole),
    ROLE(96, plcInovanceByteOrderRole),
    ROLE(97, plcInovanceStartAddress0Role),
    ROLE(98, plcInovanceCharReversedRole),
    ROLE(99, plcXinjeSeriesRole),
    ROLE(100, plcXinjeStationNumRole),
    ROLE(101, plcXinjeByteOrderRole),
    ROLE(102, plcXinjeStartAddress0Role),
    ROLE(103, plcXinjeCharReversedRole),
    ROLE(104, plcModbusSeriesRole),
    ROLE(105, plcModbusStationNumRole),
    ROLE(106, plcModbusByteOrderRole),
    ROLE(107, plcModbusStartAddress0Role),
    ROLE(108, plcModbusCharReversedRole),
    ROLE(109, plcDeltaSeriesRole),
    ROLE(110, plcDeltaStationNumRole),
    ROLE(111, plcDeltaByteOrderRole),
    ROLE(112, plcDeltaStartAddress0Role),
    ROLE(113, plcDeltaCharReversedRole),
    ROLE(114, plcParametersRole),
};
#undef ROLE
// clang-format on

} // namespace

class TestItemRoles : public QObject
{
    Q_OBJECT
private slots:
    void everyRoleHasItsNumber_data();
    void everyRoleHasItsNumber();
    void numbersHaveNoGap();
    void thereAreNoOtherRoles();
};

void TestItemRoles::everyRoleHasItsNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("expected");
    for (const Role &role : roles) {
        QTest::newRow(role.name) << role.number << 256 + role.offset;
    }
}

void TestItemRoles::everyRoleHasItsNumber()
{
    QFETCH(int, number);
    QFETCH(int, expected);
    QCOMPARE(number, expected);
}

void TestItemRoles::numbersHaveNoGap()
{
    QSet<int> offsets;
    for (const Role &role : roles) {
        offsets.insert(role.offset);
    }
    for (int offset = 0; offset <= 204; ++offset) {
        QVERIFY2(offsets.contains(offset), qPrintable(QString::number(offset)));
    }
    QCOMPARE(offsets.size(), 205);
}

// The enumeration can't be walked, so its source is.
void TestItemRoles::thereAreNoOtherRoles()
{
    QSet<QString> known;
    for (const Role &role : roles) {
        known.insert(QLatin1String(role.name));
    }
    QFile header(QString(SOURCE_ROOT "/src/model/itemroles.h"));
    QVERIFY(header.open(QIODevice::ReadOnly));
    const QString source = QString::fromUtf8(header.readAll());
    QSet<QString> declared;
    static const QRegularExpression enumerator("^\\s+(\\w+) = ", QRegularExpression::MultilineOption);
    auto match = enumerator.globalMatch(source);
    while (match.hasNext()) {
        declared.insert(match.next().captured(1));
    }
    QCOMPARE(declared, known);
}

QTEST_GUILESS_MAIN(TestItemRoles)
#include "tst_itemroles.moc"

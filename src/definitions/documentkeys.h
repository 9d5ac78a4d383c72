#pragma once

#include "definitions/dlt645items.h"
#include "model/itemroles.h"

#include <QJsonValue>
#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <array>

// The keys of the project document, each beside the role or the row cell that it stands for. The writer and
// the reader walk the same tables, so that a new key is one line here.
namespace DocumentKeys {

// How a value lies in the document. Everything is a string there.
enum class Coding {
    Text, // as the role holds it
    Flag, // "true" becomes "1", all else "0"; read back "1" becomes "true", all else "false"
};

QString toDocument(const QVariant &value, Coding coding);
// A value that is no string reads as an empty one.
QString fromDocument(const QJsonValue &value, Coding coding);

struct Field {
    QLatin1String key;
    int role;
};

// The cell of a row is the place in the table.
struct Column {
    QLatin1String key;
    Coding coding = Coding::Text;
};

// Kinds of a Standard that differ in the members of "parameter". A Modbus Standard of neither mode is None.
enum StandardKind : unsigned {
    None = 0,
    ModbusTcp = 0x01,
    ModbusRtu = 0x02,
    Meter = 0x04, // DLT645
    Dido = 0x08,
    CustomPoll = 0x10,
    OpcUa = 0x20,
    Serial = ModbusRtu | Meter | CustomPoll,
    AnyKind = 0x3f,
};

struct ParameterField {
    QLatin1String key;
    int role;
    Coding coding;
    unsigned writtenFor; // StandardKinds; the reader takes every member for every kind.
};

// clang-format off
inline const QLatin1String nameKey("name");
inline const QLatin1String descriptionKey("description");
inline const QLatin1String protocolKey("protocol");
inline const QLatin1String modbusKey("modbus");
inline const QLatin1String parameterKey("parameter");
inline const QLatin1String extendedParametersKey("extendedParameters");
inline const QLatin1String authenticationKey("authentication");
inline const QLatin1String datasKey("datas");
inline const QLatin1String standardsKey("standards");
inline const QLatin1String servicesKey("services");
inline const QLatin1String boxsKey("boxs");

inline const Field boxFields[] = {
    {QLatin1String("ip"), boxIpRole},
    {QLatin1String("lanIp"), boxLanIpRole},
    {QLatin1String("lanMask"), boxLanMaskRole},
    {QLatin1String("lanGateway"), boxLanGatewayRole},
    {QLatin1String("lanDns1"), boxLanDns1Role},
    {QLatin1String("lanDns2"), boxLanDns2Role},
    {QLatin1String("wanDhcp"), boxWanDhcpRole},
    {QLatin1String("wanIp"), boxWanIpRole},
    {QLatin1String("wanMask"), boxWanMaskRole},
    {QLatin1String("wanGateway"), boxWanGatewayRole},
    {QLatin1String("wanDns1"), boxWanDns1Role},
    {QLatin1String("wanDns2"), boxWanDns2Role},
    {QLatin1String("wifiOnOff"), boxWifiOnOffRole},
    {QLatin1String("wifiMode"), boxWifiModeRole},
    {QLatin1String("wifissid"), boxWifiSsidRole},
    {QLatin1String("wifipassword"), boxWifiPasswordRole},
    {QLatin1String("wifiDhcp"), boxWifiDhcpRole},
    {QLatin1String("wifiIp"), boxWifiIpRole},
    {QLatin1String("wifiMask"), boxWifiMaskRole},
    {QLatin1String("wifiGateway"), boxWifiGatewayRole},
    {QLatin1String("wifiDns1"), boxWifiDns1Role},
    {QLatin1String("wifiDns2"), boxWifiDns2Role},
    {QLatin1String("lteOnOff"), boxLteOnOffRole},
};

inline const Field serviceFields[] = {
    {QLatin1String("port"), servicePortRole},
    {QLatin1String("enableGoosePublishing"), serviceEnableGoosePublishingRole},
    {QLatin1String("enableSSL"), serviceEnableSslRole},
    {QLatin1String("isVerifyClientCert"), serviceIsVerifyClientCertRole},
};

inline const Field servicePasswordFields[] = {
    {QLatin1String("password"), servicePasswordRole},
};

inline const Field serviceCertificateFields[] = {
    {QLatin1String("rootCertificate"), serviceRootCertificateRole},
    {QLatin1String("rootCertificatePath"), serviceRootCertificatePathRole},
    {QLatin1String("serverCertificate"), serviceServerCertificateRole},
    {QLatin1String("serverCertificatePath"), serviceServerCertificatePathRole},
    {QLatin1String("serverKey"), serviceServerKeyRole},
    {QLatin1String("serverKeyPath"), serviceServerKeyPathRole},
    {QLatin1String("serverKeyPassword"), serviceServerKeyPasswordRole},
};

inline const Field serviceClientCertificateFields[] = {
    {QLatin1String("clientCertificate1"), serviceClientCertificate1Role},
    {QLatin1String("clientCertificatePath1"), serviceClientCertificatePath1Role},
    {QLatin1String("clientCertificate2"), serviceClientCertificate2Role},
    {QLatin1String("clientCertificatePath2"), serviceClientCertificatePath2Role},
    {QLatin1String("clientCertificate3"), serviceClientCertificate3Role},
    {QLatin1String("clientCertificatePath3"), serviceClientCertificatePath3Role},
    {QLatin1String("clientCertificate4"), serviceClientCertificate4Role},
    {QLatin1String("clientCertificatePath4"), serviceClientCertificatePath4Role},
    {QLatin1String("clientCertificate5"), serviceClientCertificate5Role},
    {QLatin1String("clientCertificatePath5"), serviceClientCertificatePath5Role},
    {QLatin1String("clientCertificate6"), serviceClientCertificate6Role},
    {QLatin1String("clientCertificatePath6"), serviceClientCertificatePath6Role},
    {QLatin1String("clientCertificate7"), serviceClientCertificate7Role},
    {QLatin1String("clientCertificatePath7"), serviceClientCertificatePath7Role},
    {QLatin1String("clientCertificate8"), serviceClientCertificate8Role},
    {QLatin1String("clientCertificatePath8"), serviceClientCertificatePath8Role},
    {QLatin1String("clientCertificate9"), serviceClientCertificate9Role},
    {QLatin1String("clientCertificatePath9"), serviceClientCertificatePath9Role},
    {QLatin1String("clientCertificate10"), serviceClientCertificate10Role},
    {QLatin1String("clientCertificatePath10"), serviceClientCertificatePath10Role},
};

// One key, two roles: a Standard keeps the time-out of its serial line apart from that of its TCP link.
inline const QLatin1String communicationTimeoutKey("communicationTimeout");

inline const ParameterField standardParameters[] = {
    {QLatin1String("serialport"), standardSerialPortRole, Coding::Text, Serial},
    {QLatin1String("baudRate"), standardBaudRateRole, Coding::Text, Serial},
    {QLatin1String("dataBit"), standardDataBitRole, Coding::Text, Serial},
    {QLatin1String("stopBit"), standardStopBitRole, Coding::Text, Serial},
    {QLatin1String("parityBit"), standardParityBitRole, Coding::Text, Serial},
    {QLatin1String("rtsEnable"), standardRtsEnableRole, Coding::Flag, Serial},
    {communicationTimeoutKey, standardCommunicationTimeoutRole, Coding::Text, ModbusTcp | Meter | CustomPoll},
    {communicationTimeoutKey, standardRtuCommunicationTimeoutRole, Coding::Text, ModbusRtu},
    {QLatin1String("communicationGap"), standardCommunicationGapRole, Coding::Text, Serial},
    {QLatin1String("collectionInterval"), standardCollectionIntervalRole, Coding::Text, AnyKind},
    {QLatin1String("url"), standardUrlRole, Coding::Text, OpcUa},
    {QLatin1String("ip"), standardIpRole, Coding::Text, ModbusTcp},
    {QLatin1String("port"), standardPortRole, Coding::Text, ModbusTcp},
    {QLatin1String("connectionTimeout"), standardConnectionTimeoutRole, Coding::Text, ModbusTcp},
    {QLatin1String("keepAlive"), standardKeepAliveRole, Coding::Text, ModbusTcp},
};

// "extendedParameters" of OpcUA, beside "authentication".
inline const Field standardSecurityFields[] = {
    {QLatin1String("securityPolicy"), standardSecurityPolicyRole},
    {QLatin1String("messageSecurityMode"), standardMessageSecurityModeRole},
    {QLatin1String("username"), standardUsernameRole},
    {QLatin1String("password"), standardPasswordRole},
    {QLatin1String("certificate"), standardCertificateRole},
    {QLatin1String("certificatePath"), standardCertificatePathRole},
    {QLatin1String("privateKey"), standardPrivateKeyRole},
    {QLatin1String("privateKeyPath"), standardPrivateKeyPathRole},
};

// Row 0 of a Modbus group, then each further row.
inline const Column modbusGroupColumns[] = {
    {QLatin1String("series")},
    {QLatin1String("stationNum")},
    {QLatin1String("byteOrder")},
    {QLatin1String("startAddress0"), Coding::Flag},
    {QLatin1String("charReversed"), Coding::Flag},
};
inline const Column modbusPointColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("dataType")},
    {QLatin1String("length")},
    {QLatin1String("permissions")},
};

// A DLT645 group and point: no plain columns, see the writer and the reader.
inline const QLatin1String slaveAddressKey("slaveAddress");
inline const QLatin1String protocolVersionKey("protocolVersion");
inline const QLatin1String selectKey("select");
inline const QLatin1String addrKey("addr");
inline const QLatin1String dataTypeKey("dataType");

// Rows of the kinds that keep a plain list. They are written and never read back.
inline const Column didoColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("permissions")},
    {QLatin1String("reportingMethod")},
};
inline const Column customPollColumns[] = {
    {QLatin1String("name")},
    {QLatin1String("hex")},
    {QLatin1String("dataContent")},
    {QLatin1String("crc")},
    {QLatin1String("permissions")},
    {QLatin1String("reportingMethod")},
};
inline const Column opcUaColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("index")},
    {QLatin1String("nodeType")},
    {QLatin1String("permissions")},
    {QLatin1String("reportingMethod")},
    {QLatin1String("changeAmplitude")},
    {QLatin1String("collectionFormula")},
    {QLatin1String("writeFormula")},
    {QLatin1String("dataType")},
};
// clang-format on

// The texts that the document compares with, in the language in force when this object was made. One is made
// for each run of the writer or the reader.
struct Texts {
    Texts();

    // Display texts of "authentication", the place being the code "0" or "1".
    std::array<QString, 2> serviceAuthentication;
    std::array<QString, 2> standardAuthentication;
    Dlt645::Labels labels;
};

} // namespace DocumentKeys

#include "boxctl/formnames.h"

#include <QRegularExpression>

#include <iterator>

namespace {

// In the order of the forms.
const struct {
    const char *key;
    const char *name;
} names[] = {
    {"description", "Description"},
    {"protocol", "Protocol"},
    {"modbus", "Modbus"},
    {"ip", "IP"},
    {"port", "Port"},
    {"connectionTimeout", "Connection Timeout"},
    {"url", "URL"},
    {"serialport", "Serial Port"},
    {"baudRate", "Baud Rate"},
    {"dataBit", "Data Bit"},
    {"stopBit", "Stop Bit"},
    {"parityBit", "Parity Bit"},
    {"rtsEnable", "Rts Enable"},
    {"communicationTimeout", "Communication Timeout"},
    {"communicationGap", "Communication Gap"},
    {"keepAlive", "Keep Alive Time"},
    {"collectionInterval", "Trigger Conditions"},
    {"securityPolicy", "Security Policy"},
    {"messageSecurityMode", "Message Mode"},
    {"authentication", "Authentication"},
    {"username", "User Name"},
    {"password", "Password"},
    {"certificate", "Certificate"},
    {"privateKey", "Private Key"},
    {"enableGoosePublishing", "Enable GoosePublishing"},
    {"enableSSL", "Enable SSL"},
    {"rootCertificate", "Root Certificate"},
    {"serverCertificate", "Server Certificate"},
    {"serverKey", "Server Key"},
    {"serverKeyPassword", "Server Key Password"},
    {"isVerifyClientCert", "IsVerifyClientCert"},
    {"clientCertificate1", "Client Certificate1"},
    {"clientCertificate2", "Client Certificate2"},
    {"clientCertificate3", "Client Certificate3"},
    {"clientCertificate4", "Client Certificate4"},
    {"clientCertificate5", "Client Certificate5"},
    {"clientCertificate6", "Client Certificate6"},
    {"clientCertificate7", "Client Certificate7"},
    {"clientCertificate8", "Client Certificate8"},
    {"clientCertificate9", "Client Certificate9"},
    {"clientCertificate10", "Client Certificate10"},
    {"series", "Series"},
    {"stationNum", "Station Num"},
    {"byteOrder", "Byte Order"},
    {"startAddress0", "StartAddress0"},
    {"charReversed", "Char Reversed"},
    {"slaveAddress", "Slave Address"},
    {"protocolVersion", "Protocol Version"},
    {"addr", "Address"},
    {"dataType", "Type"},
    {"length", "Length"},
    {"permissions", "Permissions"},
    {"reportingMethod", "Reporting Method"},
    {"changeAmplitude", "Change Amplitude"},
    {"collectionFormula", "Collection Formula"},
    {"writeFormula", "Write Formula"},
    {"hex", "HEX"},
    {"dataContent", "Data Content"},
    {"crc", "CRC"},
    {"index", "Spatial Index"},
    {"nodeType", "Node Type"},
    {"lanIp", "LAN IP"},
    {"lanMask", "LAN Mask"},
    {"lanGateway", "LAN Gateway"},
    {"lanDns1", "LAN Dns1"},
    {"lanDns2", "LAN Dns2"},
    {"wanDhcp", "WAN Dhcp"},
    {"wanIp", "WAN IP"},
    {"wanMask", "WAN Mask"},
    {"wanGateway", "WAN Gateway"},
    {"wanDns1", "WAN Dns1"},
    {"wanDns2", "WAN Dns2"},
    {"wifiOnOff", "WIFI wifiOnOff"},
    {"wifiMode", "WIFI Mode"},
    {"wifissid", "WIFI SSID"},
    {"wifipassword", "WIFI Password"},
    {"wifiDhcp", "WIFI Dhcp"},
    {"wifiIp", "WIFI IP"},
    {"wifiMask", "WIFI Mask"},
    {"wifiGateway", "WIFI Gateway"},
    {"wifiDns1", "WIFI Dns1"},
    {"wifiDns2", "WIFI Dns2"},
    {"lteOnOff", "LTE 4G"},
};

// A form shows where a certificate lay in the field of the certificate.
const QLatin1String pathMark("Path");

QString withoutMark(const QString &key)
{
    return QString(key).remove(pathMark);
}

} // namespace

int FormNames::placeOf(const QString &key)
{
    const QString base = withoutMark(key);
    int place = 0;
    while (place < int(std::size(names)) && base != QLatin1String(names[place].key)) {
        ++place;
    }
    return place;
}

QString FormNames::of(const QString &key)
{
    const int place = placeOf(key);
    if (place == int(std::size(names))) {
        return QStringLiteral("\"%1\"").arg(key);
    }
    const QString name = QString::fromLatin1(names[place].name);
    return key.contains(pathMark) ? name + QStringLiteral(" file") : name;
}

bool FormNames::isSecret(const QString &key)
{
    // "PW" is the password of HJ212. A document by hand may have keys of its own, so rather one too many.
    static const QRegularExpression secret(
        QStringLiteral("pass(word|wd|phrase)|pwd|^pw$|secret|token|credential|(key|certificate)\\d*$"),
        QRegularExpression::CaseInsensitiveOption);
    return secret.match(key).hasMatch();
}

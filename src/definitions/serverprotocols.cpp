#include "definitions/serverprotocols.h"

#include <QCoreApplication>

#include <algorithm>

QString ServerProtocol::shownName(const char *context) const
{
    return isTranslated ? QCoreApplication::translate(context, key.toLatin1().constData()) : key;
}

const QVector<ServerProtocol> &ServerProtocols::all()
{
    // clang-format off
    using P = ServerProtocol;
    static const QVector<ServerProtocol> protocols = {
        {QStringLiteral("MQTT"), false, "MQTT.svg", "1883", nullptr, P::Address | P::Port},
        {QT_TRANSLATE_NOOP("ServerFields", "AliMQTT"), true, "ali.svg", "1883", "", P::Domain | P::Port},
        {QT_TRANSLATE_NOOP("ServerFields", "OneNetMQTT"), true, "onenet.svg", "1883", "mqtts.heclouds.com",
         P::Domain | P::Port},
        {QT_TRANSLATE_NOOP("ServerFields", "HuaWeiMQTT"), true, "HuaWei.svg", "8883", "", P::Domain | P::Port},
        {QStringLiteral("ModbusTCP(Slave)"), false, "server-file.svg", "502", nullptr,
         P::LocalPort | P::SlaveNote, true},
        {QStringLiteral("HJ212"), false, "HJ212.svg", "", nullptr, P::Address | P::Port},
        {QStringLiteral("SL651"), false, "SL651.svg", "", nullptr, P::Address | P::Port},
        {QStringLiteral("OpcUaServer"), false, "OpcUaServer.svg", "4840", nullptr, P::Port},
    };
    // clang-format on
    return protocols;
}

QString ServerProtocols::icon(const QString &key)
{
    const auto found = std::find_if(all().begin(), all().end(),
                                    [&](const ServerProtocol &protocol) { return protocol.key == key; });
    return found == all().end() ? QString()
                                : QStringLiteral(":/adsdemo/images/") + QLatin1String(found->icon);
}

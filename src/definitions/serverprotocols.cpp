#include "definitions/serverprotocols.h"

#include "definitions/protocols.h"

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
        {Protocols::mqtt, false, "MQTT.svg", "1883", nullptr, P::Address | P::Port},
        {Protocols::aliMqtt, true, "ali.svg", "1883", "", P::Domain | P::Port},
        {Protocols::oneNetMqtt, true, "onenet.svg", "1883", "mqtts.heclouds.com",
         P::Domain | P::Port},
        {Protocols::huaWeiMqtt, true, "HuaWei.svg", "8883", "", P::Domain | P::Port},
        {Protocols::modbusTcpSlave, false, "server-file.svg", "502", nullptr,
         P::LocalPort | P::SlaveNote, true},
        {Protocols::hj212, false, "HJ212.svg", "", nullptr, P::Address | P::Port},
        {Protocols::sl651, false, "SL651.svg", "", nullptr, P::Address | P::Port},
        {Protocols::opcUaServer, false, "OpcUaServer.svg", "4840", nullptr, P::Port},
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

#pragma once

#include "definitions/choices.h"
#include "definitions/dlt645items.h"
#include "definitions/values.h"

#include <QJsonValue>
#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <array>

// The keys of the project document that are no value of a definition: names of objects and of arrays, and
// what the tabs of a Standard hold. The values are in values.h.
namespace DocumentKeys {

// Coding::Text or Coding::Flag.
QString toDocument(const QVariant &value, Definitions::Coding coding);
// A value that is no string reads as an empty one.
QString fromDocument(const QJsonValue &value, Definitions::Coding coding);

// clang-format off
inline const QLatin1String nameKey("name");
inline const QLatin1String descriptionKey("description");
inline const QLatin1String protocolKey("protocol");
inline const QLatin1String manufacturerKey("manufacturer");
inline const QLatin1String modbusKey("modbus");
inline const QLatin1String parameterKey("parameter");
inline const QLatin1String extendedParametersKey("extendedParameters");
inline const QLatin1String datasKey("datas");
inline const QLatin1String registerKey("register");
inline const QLatin1String standardsKey("standards");
inline const QLatin1String servicesKey("services");
inline const QLatin1String boxsKey("boxs");

// A Modbus group: row 0, then each further row.
inline const Definitions::Column modbusGroupColumns[] = {
    {QLatin1String("series"), Definitions::Coding::Text, Choices::modbusSeries},
    {QLatin1String("stationNum")},
    {QLatin1String("byteOrder"), Definitions::Coding::Text, Choices::byteOrders},
    {QLatin1String("startAddress0"), Definitions::Coding::Flag},
    {QLatin1String("charReversed"), Definitions::Coding::Flag},
};
inline const Definitions::Column modbusPointColumns[] = {
    {QLatin1String("addr")},
    {QLatin1String("name")},
    {QLatin1String("dataType"), Definitions::Coding::Text, Choices::dataTypes},
    {QLatin1String("length")},
    {QLatin1String("permissions"), Definitions::Coding::Text, Choices::permissions},
};
// clang-format on

// A DLT645 group and point: no plain columns, since the item's label stands for two of them.
inline const QLatin1String slaveAddressKey("slaveAddress");
inline const QLatin1String protocolVersionKey("protocolVersion");
inline const QLatin1String selectKey("select");
inline const QLatin1String addrKey("addr");
inline const QLatin1String dataTypeKey("dataType");

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

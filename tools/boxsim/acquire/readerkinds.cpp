#include "boxsim/acquire/readerkinds.h"

#include "boxsim/simproject.h"
#ifdef BOXSIM_DLT645
#include "boxsim/acquire/dlt645reader.h"
#endif
#ifdef BOXSIM_MODBUS
#include "boxsim/acquire/modbusreader.h"
#endif

#include <QVector>

namespace {

const QVector<ReaderKind> &kinds()
{
    static const QVector<ReaderKind> kinds = {
#ifdef BOXSIM_MODBUS
        {"Modbus TCP", "Modbus", "ModbusTCP", false, makeModbusTcpReader},
        {"Modbus RTU", "Modbus", "ModbusRTU", true, makeModbusRtuReader},
#endif
#ifdef BOXSIM_DLT645
        {"DL/T 645", "DLT645", "", true, makeDlt645Reader},
#endif
    };
    return kinds;
}

} // namespace

QStringList readerTitles()
{
    QStringList titles;
    for (const ReaderKind &kind : kinds()) {
        titles.append(QLatin1String(kind.title));
    }
    return titles;
}

const ReaderKind *readerKind(const SimStandard &standard)
{
    for (const ReaderKind &kind : kinds()) {
        if (standard.protocol == QLatin1String(kind.protocol) && standard.mode == QLatin1String(kind.mode)) {
            return &kind;
        }
    }
    return nullptr;
}

#include "document/standardcheck.h"

#include "definitions/documentkeys.h"
#include "definitions/protocols.h"
#include "document/checkedobject.h"
#include "document/checktext.h"
#include "document/pointcheck.h"
#include "document/sharedlines.h"

using namespace Definitions;

namespace {

constexpr auto error = ProjectCheck::Severity::Error;

// The settings of a tab: those of a slave or of a meter.
void checkTab(CheckedObject *standard, const PointCheck::Tab &tab, bool isMeter)
{
    const QJsonObject &group = tab.group;
    const char *const address = isMeter ? "slaveAddress" : "stationNum";
    if (group.value(QLatin1String(address)).toString().trimmed().isEmpty()) {
        standard->error(tab.place() + CheckText::empty(CheckText::labelOf(QLatin1String(address))));
    }
    if (isMeter) {
        const QJsonValue version = group.value(DocumentKeys::protocolVersionKey);
        if (version.toInt() != Dlt645::Version2007 && version.toInt() != Dlt645::Version1997) {
            standard->error(tab.place()
                            + CheckText::notInList(CheckText::labelOf(DocumentKeys::protocolVersionKey),
                                                   version.toVariant().toString()));
        }
        return;
    }
    for (const Column &column : DocumentKeys::modbusGroupColumns) {
        const QString chosen = group.value(column.key).toString();
        if (column.choices && !Choices::list(column.choices).contains(chosen)) {
            const QString label = CheckText::labelOf(column.key);
            standard->error(
                tab.place()
                + (chosen.isEmpty() ? CheckText::empty(label) : CheckText::notInList(label, chosen)));
        }
    }
}

void checkTabs(CheckedObject *standard, bool isMeter, SharedLines *lines)
{
    const QJsonArray groups = standard->array("datas");
    PointCheck::Names names;
    int number = 0;
    for (const QJsonValue &value : groups) {
        const PointCheck::Tab tab{++number, value.toObject()};
        checkTab(standard, tab, isMeter);
        lines->addStation(standard, tab, isMeter);
        PointCheck::check(standard, tab, isMeter, &names);
    }
    names.tellShared(standard);
}

void checkStandard(CheckedObject *standard, SharedLines *lines)
{
    standard->needText(error, "name");
    const QString protocol = standard->text("protocol");
    const unsigned kind = standardKind(protocol, standard->text("modbus"));
    if (kind == UnknownStandard) {
        const QString label = CheckText::labelOf(DocumentKeys::protocolKey);
        standard->error(protocol.isEmpty() ? CheckText::empty(label) : CheckText::notInList(label, protocol));
        return;
    }
    standard->checkValues(error, Kind::Standard, kind, true);
    if (kind == ModbusTcp) {
        standard->needText(error, "ip", Place::Parameter);
        standard->needText(error, "port", Place::Parameter);
    }
    lines->addStandard(standard, kind);
    // Of the other kinds nothing is known but their line: no form that can be reached edits them.
    if (kind & (ModbusTcp | ModbusRtu | ModbusOther | Meter)) {
        checkTabs(standard, kind == Meter, lines);
    }
}

} // namespace

void StandardCheck::check(QVector<CheckedObject> standards)
{
    SharedLines lines;
    for (CheckedObject &standard : standards) {
        checkStandard(&standard, &lines);
    }
}

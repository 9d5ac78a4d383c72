#include "support/largeplant.h"

#include "definitions/dlt645items.h"
#include "definitions/protocols.h"
#include "definitions/values.h"
#include "model/itemroles.h"

#include <QStandardItem>

#include <functional>

namespace {

using LargePlant::Shape;

// Of a Modbus Standard or a meter's; number runs through the slaves of the plant.
using MakeGroup = std::function<RowList(int number, int points)>;

void fillParameters(QStandardItem *standard, unsigned kind)
{
    for (const Definitions::Value &value : Definitions::values(Definitions::Kind::Standard)) {
        if (value.place == Definitions::Place::Parameter && (value.subKinds & kind)) {
            standard->setData(QStringLiteral("1000"), value.role);
        }
    }
}

std::unique_ptr<QStandardItem> project(const Shape &shape, const QString &protocol, unsigned kind,
                                       const MakeGroup &makeGroup)
{
    std::unique_ptr<QStandardItem> project(
        ProjectTree::makeProject(QStringLiteral("Plant"), QString(), QStringLiteral("A large plant")));
    ProjectTree::appendMissingFolders(project.get());
    QStandardItem *folder = ProjectTree::childNamed(project.get(), ProjectTree::standardFolder);
    for (int number = 0; number < shape.standards; ++number) {
        QStandardItem *standard = ProjectTree::appendDefinition(folder, QStringLiteral("Line %1").arg(number),
                                                                Protocols::standardIcon(protocol));
        standard->setData(protocol, standardProtocolRole);
        standard->setData(QString(Protocols::modbusTcp), standardModbusModeRole);
        fillParameters(standard, kind);
        GroupMap groups;
        for (int slave = 0; slave < shape.slaves; ++slave) {
            groups.insert(QStringLiteral("%1-%2").arg(protocol).arg(slave + 1),
                          makeGroup(number * shape.slaves + slave, shape.points));
        }
        standard->setData(QVariant::fromValue(groups), standardDatasRole);
    }
    return project;
}

RowList modbusGroup(int number, int points)
{
    RowList rows{{QStringLiteral("Modbus"), QString::number(number % 247 + 1), QStringLiteral("ABCD"),
                  QStringLiteral("true"), QStringLiteral("false")}};
    for (int point = 0; point < points; ++point) {
        rows.append(LargePlant::modbusPoint(number * points + point));
    }
    return rows;
}

RowList meterGroup(int number, int points)
{
    const auto &items = Dlt645::items();
    RowList rows{{QStringLiteral("%1").arg(number, 12, 10, QLatin1Char('0')), QStringLiteral("DLT645_2007")}};
    for (int point = 0; point < points; ++point) {
        rows.append(QVariantList{QStringLiteral("true"), Dlt645::label(items[size_t(point) % items.size()]),
                                 QStringLiteral("Point %1").arg(number * points + point)});
    }
    return rows;
}

} // namespace

namespace LargePlant {

QVariantList modbusPoint(int number)
{
    static const char *const types[] = {"uint16", "int32", "float", "bool"};
    return {QString::number(40001 + number % 20000), QStringLiteral("Point %1").arg(number),
            QString::fromLatin1(types[number % 4]), QStringLiteral("1"),
            number % 2 == 0 ? QStringLiteral("r") : QStringLiteral("rw")};
}

RowList modbusTab(int points)
{
    return modbusGroup(0, points);
}

std::unique_ptr<QStandardItem> modbusProject(const Shape &shape)
{
    return project(shape, Protocols::modbus, Definitions::ModbusTcp, modbusGroup);
}

std::unique_ptr<QStandardItem> meterProject(const Shape &shape)
{
    return project(shape, Protocols::dlt645, Definitions::Meter, meterGroup);
}

} // namespace LargePlant

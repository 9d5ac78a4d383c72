#pragma once

#include "model/projecttree.h"

#include <memory>

class QStandardItem;

// Projects of the size of a large plant, filled as the forms fill them.
namespace LargePlant {

struct Shape {
    int standards = 100;
    int slaves = 20; // of each Standard
    int points = 50; // of each slave

    int total() const { return standards * slaves * points; }
};

// A Modbus point as a row of a stored tab. Names and addresses differ within the plant.
QVariantList modbusPoint(int number);
// A stored Modbus tab: its settings and this many points.
RowList modbusTab(int points);

// A detached project of Standards "ModbusTCP".
std::unique_ptr<QStandardItem> modbusProject(const Shape &shape);
// The same of DLT645 Standards, every point an item of the meter's table in the language in force.
std::unique_ptr<QStandardItem> meterProject(const Shape &shape);

} // namespace LargePlant

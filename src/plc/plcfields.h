#pragma once

#include "definitions/plccatalogue.h"
#include "forms/fieldtable.h"

// The tables that the PLC form is made of; all labels and titles are source texts of PLCEditDialog.
namespace PlcFields {

struct Group {
    PlcGroup id;
    const char *name;  // objectName of the group box
    const char *title; // null for a box without one
    QVector<Field> fields;
};

// Name, manufacturer and protocol; the form fills the list of protocols.
QVector<Field> attributes();
// The groups of links and protocols, from top to bottom; the form fills the list of S7 models.
QVector<Group> groups();
// The period of the trigger, in milliseconds.
QVector<Field> trigger();
// The model of an Omron PLC on EtherNet/IP. On purpose no one sees it and no save touches it: it stays on the
// item for the document.
QVector<Field> omronModel();

} // namespace PlcFields

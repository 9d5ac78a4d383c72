#pragma once

#include "definitions/plccatalogue.h"
#include "forms/fieldgroup.h"

// What the PLC form is made of; all labels and titles are source texts of PLCEditDialog.
namespace PlcFields {

struct Group {
    PlcGroup id;
    const char *name;                    // objectName of the frame
    const char *title;                   // null for a frame without one
    void (*addRows)(FieldGroup &fields); // null for the S7 models, to which the form talks
};

// The groups of links and protocols, from top to bottom.
const QVector<Group> &groups();

// The row of the model, which the form fills.
ListField *addModels(FieldGroup &fields);
// The model of an Omron PLC on EtherNet/IP, which no one sees.
void addOmronModel(FieldGroup &fields);

} // namespace PlcFields

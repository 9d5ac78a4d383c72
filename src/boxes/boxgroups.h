#pragma once

#include "forms/fieldtable.h"

class BoxEditDialog;

// One group of a Box's settings as the form shows it: a page with its fields over "Read" and "Write".
struct BoxGroup {
    const char *name;  // of the buttons: "<name>ReadButton", "<name>WriteButton"
    const char *title; // source text of the tab, or null for a page that is built and never shown
    void (BoxEditDialog::*read)();
    void (BoxEditDialog::*write)();
    QVector<Field> fields;
};

// The tables that the form is made of; all labels and entries are source texts of BoxEditDialog.
namespace BoxGroups {

// The rows above the tabs.
QVector<Field> head();
// The model, which no one sees.
QVector<Field> model();
// The groups, in the order of their tabs.
QVector<BoxGroup> groups();

} // namespace BoxGroups

#pragma once

#include "boxlink/boxsettings.h"
#include "forms/fieldtable.h"

// One group of a Box's settings as the form shows it: a page with its fields over "Read" and "Write".
struct BoxGroup {
    const char *name;  // of the buttons: "<name>ReadButton", "<name>WriteButton"
    const char *title; // source text of the tab, or null for a page that is built and never shown
    // Of the lines in the activity log: "read <logName>", "write <logName>", "update <updateName>".
    const char *logName;
    const char *updateName;
    const char *updateTitle; // source texts of the message that tells of an answer
    const char *updateText;
    // In the order of the record. A page with more of them sends the first and shows answers in the last.
    QVector<Field> fields;
};

// The tables that the form is made of; all labels and entries are source texts of BoxEditDialog.
namespace BoxGroups {

// The rows above the tabs.
QVector<Field> head();
// The model, which no one sees.
QVector<Field> model();
// The groups, by SettingsGroup, which is the order of their tabs.
QVector<BoxGroup> groups();

} // namespace BoxGroups

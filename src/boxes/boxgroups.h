#pragma once

#include "boxlink/boxsettings.h"
#include "forms/fieldgroup.h"

// One group of a Box's settings as the form shows it: a page with its fields over "Read" and "Write".
struct BoxGroup {
    using Fields = QVector<FormField *>;

    const char *name;  // of the buttons: "<name>ReadButton", "<name>WriteButton"
    const char *title; // source text of the tab, or null for a page that is built and never shown
    // Of the lines in the activity log: "read <logName>", "write <logName>", "update <updateName>".
    const char *logName;
    const char *updateName;
    const char *updateTitle; // source texts of the message that tells of an answer
    const char *updateText;
    // Adds the rows of the page and gives their fields in the order of the record. A page with more of them
    // sends the first and shows answers in the last.
    Fields (*addRows)(FieldGroup &group);
};

// What the form is made of; the texts are those of BoxEditDialog.
namespace BoxGroups {

// The groups, by SettingsGroup, which is the order of their tabs.
const QVector<BoxGroup> &groups();

} // namespace BoxGroups

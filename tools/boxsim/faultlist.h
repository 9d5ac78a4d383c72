#pragma once

#include <QString>

struct BoxSimFaults;

// Sets one fault by its name, "name" or "name=value". False, with the reason in error (null allowed) and
// faults unchanged, if there is no such fault or its value is missing or out of range.
bool applyFault(const QString &text, BoxSimFaults *faults, QString *error = nullptr);

// One entry of the help for each: its name with its value's meaning, and a sentence.
QString faultList();

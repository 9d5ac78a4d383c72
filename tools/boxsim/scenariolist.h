#pragma once

#include "boxsim/helpentry.h"

#include <QStringList>

// Scenarios: names for sets of options that are often wanted together.

// The arguments that a scenario stands for; empty if there is none of that name.
QStringList scenarioArguments(const QString &name);

// One entry a scenario: its name, and a sentence with what it stands for.
QVector<HelpEntry> scenarioEntries();

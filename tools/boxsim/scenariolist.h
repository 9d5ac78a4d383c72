#pragma once

#include <QStringList>

// Scenarios: names for sets of options that are often wanted together.

// The arguments that a scenario stands for; empty if there is none of that name.
QStringList scenarioArguments(const QString &name);

// One entry of the help for each: its name, a sentence, and the options that it stands for.
QString scenarioList();

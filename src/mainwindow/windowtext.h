#pragma once

#include <QCoreApplication>

class QTranslator;

// The texts of the window's collaborators, which are in its own part of the catalogue.
struct WindowText {
    Q_DECLARE_TR_FUNCTIONS(CMainWindow)
public:
    // Puts a catalogue in the place of the one that the translator holds. One that cannot be read is a
    // warning in the log and leaves the source texts.
    static void load(QTranslator *translator, const QString &file);
};

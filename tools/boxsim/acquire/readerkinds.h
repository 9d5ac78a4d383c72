#pragma once

#include "boxsim/acquire/devicereader.h"

#include <QStringList>

#include <memory>

// The readers that are built in, one a protocol.
struct ReaderKind {
    const char *title;    // for the help
    const char *protocol; // of the Standards that it reads
    const char *mode;     // their mode
    bool serial;          // whether it needs a serial line
    std::unique_ptr<DeviceReader> (*make)(const ReaderSetup &setup);
};

// What --help says is built in.
QStringList readerTitles();
// The kind for this Standard, null for none.
const ReaderKind *readerKind(const SimStandard &standard);

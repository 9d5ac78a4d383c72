#pragma once

#include "gallery.h"

// What live pages have of recordings, and the dialogs of these.
QVector<Exhibit> recordingExhibits();

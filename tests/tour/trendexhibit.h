#pragma once

class QWidget;

// Windows of trends for the gallery.
namespace TrendExhibit {

// Curves on both scales, gaps, texts, markers and a recording.
QWidget *full();
QWidget *empty();
// The dialog that adds points.
QWidget *points();

} // namespace TrendExhibit

#pragma once

class QPalette;
class QTreeView;

namespace ads {
class CDockManager;
} // namespace ads

// How the docks look and what they tell screen readers, beyond what the docking library gives.
namespace DockStyle {

// Adds to the library's style sheet, which is drawn for light ground, what the desktop's colours need, and
// gives the title bars of present and future docks names and no needless stops of the Tab key.
void install(ads::CDockManager *manager, const QPalette &desktop);

// Puts the style sheet "visual_studio_light.css" in the place of the present one.
void applyVisualStudio(ads::CDockManager *manager);

// Keeps the selected node of a tree dark on light, whatever the desktop's colours are.
void makeSelectionReadable(QTreeView *tree);

} // namespace DockStyle

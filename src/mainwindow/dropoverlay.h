#pragma once

namespace ads {
class CDockManager;
} // namespace ads

namespace DropOverlay {

// Cuts what the library lays over the whole window while a dock is dragged down to what is to be seen of it:
// the frame around the place where the dock would go, and the signs to drop it at. The rest is see-through
// only where windows are composited, and black elsewhere.
void cutOut(const ads::CDockManager *manager);

} // namespace DropOverlay

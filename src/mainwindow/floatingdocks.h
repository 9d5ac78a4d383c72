#pragma once

namespace ads {
class CDockManager;
} // namespace ads

namespace FloatingDocks {

// Each dock of the manager that is floated from now on comes up on the screen that has most of it, and a form
// whole, smaller if need be. Where the user moves it afterwards is the user's business.
void keepOnScreen(ads::CDockManager *manager);

// On Linux the library raises all floating docks when the main window loses the focus, above the message or
// dialog that took it: what then has the focus is raised again.
void keepBelowDialogs(ads::CDockManager *manager);

} // namespace FloatingDocks

#pragma once

class QIcon;
class QPlainTextEdit;
class QString;

namespace ads {
class CDockManager;
class CDockWidget;
} // namespace ads

// Docks of which there are several; none is placed yet.
namespace DockFactory {

// A dock "Table %1", counted through the process, around an empty tab widget.
ads::CDockWidget *makeTable(ads::CDockManager *manager);
// The editor, which the dock owns, with this placeholder in a dock with this icon and the "Options" menu.
ads::CDockWidget *makeEditor(ads::CDockManager *manager, const QString &title, QPlainTextEdit *editor,
                             const QString &placeholder, const QIcon &icon);

} // namespace DockFactory

#pragma once

#include <QString>

#include <functional>

class QAbstractItemView;
class QAction;

// Copying out of tables and lists: selected cells as text with a tab between columns and a line a row, which
// is what spreadsheets paste.
namespace TableCopy {

// Gives the view "Copy" with the platform's shortcut, which then works while the view or one of its cells has
// the focus. The action belongs to the view and may go into its menu. Copies the selected text, or what
// the function gives.
QAction *install(QAbstractItemView *view, std::function<QString()> text = {});

// The selected cells that are shown, in the order shown. A row holds the columns from the first to the last
// selected one of all rows; a cell that is not selected is empty. Line breaks and tabs inside a cell become
// blanks.
QString selectedText(const QAbstractItemView *view);

} // namespace TableCopy

#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QAbstractButton;
class QDialog;
class QLineEdit;
class QMenu;
class QStandardItem;

namespace ads {
class CDockAreaWidget;
class CDockManager;
class CDockWidget;
} // namespace ads

// What a tab edits; at most one tab of each is open.
enum class EditorTab { Box, Plc, Server, Standard, Service, Project };

// A form whose name field renames the item when it is saved.
struct RenamingForm {
    QDialog *form;
    QLineEdit *name;
    QAbstractButton *save;
    std::function<void()> saveChanges;
};

// The dock tabs with the edit forms. The actions in the "View" menu are the registry of those that are open:
// an action's text is its tab's title, and a tab that closes leaves the registry at once, though the library
// deletes its dock only later.
class EditorTabs : public QObject
{
    Q_OBJECT
public:
    static QString titleOf(EditorTab kind);

    EditorTabs(ads::CDockManager *docks, QMenu *viewMenu, QObject *parent);

    // The first open tab of the kind, or null.
    ads::CDockWidget *find(EditorTab kind) const;

    // A registered tab, not placed yet, that owns the form and deletes it when it closes.
    ads::CDockWidget *make(EditorTab kind, QDialog *form);
    // A tab for what has no form: without icon, not registered and not deleted when it closes.
    ads::CDockWidget *makeEmpty(EditorTab kind);
    // Puts the tab beside the first tab of another kind, that of a project beside those of Boxes, PLCs and
    // Servers alone; else to the right, in an area of its own that is wide enough for a form.
    void place(ads::CDockWidget *tab, EditorTab kind);
    // Brings the tab to the front, also one that the "View" menu has hidden. One that a restored layout has
    // left without a place gets one as place() would give it.
    void show(ads::CDockWidget *tab, EditorTab kind);

    // Closes the first tab of the kind, if there is one; what was typed and not saved is gone.
    void closeFirst(EditorTab kind);
    // Closes all tabs of all kinds.
    void closeAll();

    // Makes the form's save button rename the item and save, then close the tab. Refuses, with a warning over
    // the window, an empty name, an item without a parent, and the name of a sibling.
    static void renameOnSave(const RenamingForm &form, QStandardItem *item, ads::CDockWidget *tab,
                             QWidget *window);

signals:
    // The tab was placed, or brought to the front.
    void shown(ads::CDockWidget *tab);

private:
    // The area of the first tab beside which one of the kind is placed, or null.
    ads::CDockAreaWidget *neighbourArea(EditorTab kind) const;
    // Widens the area, the last one of its splitter, at the cost of the widest other one there, which never
    // gets the narrower of the two.
    void widen(ads::CDockAreaWidget *area);
    void unregister(const ads::CDockWidget *tab);

    QPointer<ads::CDockManager> m_docks;
    QPointer<QMenu> m_viewMenu;
};

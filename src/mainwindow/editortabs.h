#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

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

// A form whose name field renames the item when it is saved.
struct RenamingForm {
    QDialog *form;
    QLineEdit *name;
    QAbstractButton *save;
    std::function<void()> saveChanges;
};

// The dock tabs with the edit forms. The actions in the "View" menu are the registry of those that are open:
// an action's text is its tab's title, at most one tab of a title is there, and a tab that closes leaves the
// registry at once, though the library deletes its dock only later.
class EditorTabs : public QObject
{
    Q_OBJECT
public:
    // Titles as source texts; tr() of them in the main window's context is what a tab is called.
    static const char *const boxTitle;
    static const char *const plcTitle;
    static const char *const serverTitle;
    static const char *const standardTitle;
    static const char *const serviceTitle;
    static const char *const projectTitle;
    static QString titleOf(const char *source);
    static QStringList titlesOf(const QVector<const char *> &sources);

    EditorTabs(ads::CDockManager *docks, QMenu *viewMenu, QObject *parent);

    // The first open tab of the title, or null.
    ads::CDockWidget *find(const QString &title) const;

    // A registered tab, not placed yet, that owns the form and deletes it when it closes.
    ads::CDockWidget *make(const QString &title, QDialog *form);
    // A tab for what has no form: without icon, not registered and not deleted when it closes.
    ads::CDockWidget *makeEmpty(const QString &title);
    // Puts the tab beside the first dock that has one of the neighbours' titles, else to the right, in an
    // area of its own that is wide enough for a form.
    void place(ads::CDockWidget *tab, const QStringList &neighbours);
    // Brings the tab to the front, also one that the "View" menu has hidden. One that a restored layout has
    // left without a place gets one as place() would give it.
    void show(ads::CDockWidget *tab, const QStringList &neighbours);

    // Closes the first tab of the title, if there is one; what was typed and not saved is gone.
    void closeFirst(const QString &title) const;
    // Closes all tabs of these titles.
    void closeAll(const QStringList &titles) const;

    // Makes the form's save button rename the item and save, then close the tab. Refuses, with a warning over
    // the window, an empty name, an item without a parent, and the name of a sibling.
    static void renameOnSave(const RenamingForm &form, QStandardItem *item, ads::CDockWidget *tab,
                             QWidget *window);

private:
    // Widens the area, the last one of its splitter, at the cost of the widest other one there, which never
    // gets the narrower of the two.
    void widen(ads::CDockAreaWidget *area) const;
    void unregister(const ads::CDockWidget *tab);

    QPointer<ads::CDockManager> m_docks;
    QPointer<QMenu> m_viewMenu;
};

#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace ads {
class CDockManager;
class CDockWidget;
} // namespace ads

// Free docks, for editors, tables and pictures, and a look at the docks' state. No menu leads here: the main
// window's slots of these names are reached through the meta-object system only.
class DormantDocks : public QObject
{
    Q_OBJECT
public:
    // The window owns this, and questions are shown over it. The manager may die first; then no dock is made.
    DormantDocks(ads::CDockManager *manager, QWidget *window);

    // These return the new dock, which is to be closed where its closeRequested() leads, or null.

    // A dock "Editor %1". The trigger's properties "Floating" and "Tabbed", each true when absent or when
    // there is no trigger, tell where: a window of its own, a tab beside the last docked editor, or space of
    // its own.
    ads::CDockWidget *createEditor(const QObject *trigger);
    // A picture in a dock "Image Viewer %1". The trigger's text "Floating", "Docked" or "Pinned" tells where;
    // without one of these it floats.
    ads::CDockWidget *createImageViewer(const QObject *trigger);

    // A further "Table %1" dock, in a window of its own.
    void createTable();
    void showStatusDialog();
    // Adds " (Test)" to the title of the editor that was made last, or cuts it off again.
    void toggleTitle();

    // Ask, and close the dock on Yes; null is ignored.
    void closeEditor(ads::CDockWidget *dock);
    void closeImageViewer(ads::CDockWidget *dock);

private:
    void placeEditor(ads::CDockWidget *dock, const QObject *trigger);
    void askToClose(ads::CDockWidget *dock, const QString &title, const QString &text);

    QPointer<ads::CDockManager> m_manager;
    QWidget *m_window;
    QPointer<ads::CDockWidget> m_lastEditor;
    QPointer<ads::CDockWidget> m_lastDockedEditor;
};

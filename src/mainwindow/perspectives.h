#pragma once

#include <QObject>
#include <QPointer>

class QAction;
class QComboBox;
class QWidget;

namespace ads {
class CDockManager;
} // namespace ads

// The named layouts of the docks: the list to choose one from and the action that keeps the present one. Both
// are complete and placed nowhere. Without a manager, and once it is gone, nothing happens.
class Perspectives : public QObject
{
    Q_OBJECT
public:
    // The window owns this, the list's action and the other action.
    explicit Perspectives(QWidget *window);

    // Reads the stored perspectives and offers them; a choice opens one.
    void load(ads::CDockManager *manager);
    // Asks for a name, keeps the present layout under it, replacing one of that name, and stores them all.
    void save();

signals:
    // The action "Create Perspective" was triggered.
    void createTriggered();

private:
    void fill();

    QWidget *m_window;
    QComboBox *m_names;
    QPointer<ads::CDockManager> m_manager;
};

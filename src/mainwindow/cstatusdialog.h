#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class CStatusDialogClass;
} // namespace Ui

namespace ads {
class CDockManager;
class CDockWidget;
} // namespace ads

// Shows state and feature flags of the dock that is chosen in its list.
class CStatusDialog : public QDialog
{
    Q_OBJECT
public:
    // Lists the docks that the manager has now. The manager is not owned.
    CStatusDialog(ads::CDockManager *manager, QWidget *parent);
    ~CStatusDialog() override;

private:
    void showDock(const ads::CDockWidget *dock);

    std::unique_ptr<Ui::CStatusDialogClass> m_ui;
};

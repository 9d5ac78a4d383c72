#pragma once

#include "document/projectcheck.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

class OutcomeLine;
class QLineEdit;
class QPushButton;
class QStandardItem;
class RemarksDialog;
class Workspace;

// Says which project a press of "Update project" would push, and where to, and what there is to remark on it.
// It follows the tree, whichever Box the form shows.
class PushPreview : public QWidget
{
    Q_OBJECT
public:
    // Neither the workspace, which may be null, nor the field with the Box's address is owned.
    PushPreview(Workspace *workspace, const QLineEdit *address, QWidget *parent);

    // The project of the Box whose form it is; asked each time, may answer null. The line stands out
    // where another one would be pushed.
    using Owner = std::function<const QStandardItem *()>;
    void setOwner(const Owner &owner);
    // Names both projects and the address as they are now.
    void showTarget();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void follow();
    void refreshSoon();
    // For a change below this item of the tree.
    void considerChange(const QModelIndex &parent);
    void refresh();
    void showRemarks();
    void listRemarks();
    void selectItemOf(int remark);
    QStandardItem *project() const;

    Workspace *m_workspace;
    const QLineEdit *m_address;
    Owner m_owner;
    OutcomeLine *m_target;
    QPushButton *m_count;
    QTimer m_timer;
    bool m_stale = true;             // the remarks may be others than those that are kept
    QPersistentModelIndex m_checked; // the project that they are on
    QVector<ProjectCheck::Remark> m_remarks;
    QPointer<RemarksDialog> m_list;
};

#include "boxes/pushpreview.h"

#include "boxes/outcomeline.h"
#include "boxes/remarksdialog.h"
#include "model/projecttree.h"
#include "model/workspace.h"

#include <QDateTime>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItem>
#include <QVBoxLayout>

namespace {

// A save writes dozens of roles, and a live report comes each second: one check for all that comes in a
// burst.
constexpr int burst = 40; // ms

// Live values are no part of the document.
bool isLive(const QModelIndex &index)
{
    for (QModelIndex folder = index; folder.parent().isValid(); folder = folder.parent()) {
        if (!folder.parent().parent().isValid() && folder.data().toString() == ProjectTree::dataFolder) {
            return true;
        }
    }
    return false;
}

} // namespace

PushPreview::PushPreview(Workspace *workspace, const QLineEdit *address, QWidget *parent)
    : QWidget(parent)
    , m_workspace(workspace)
    , m_address(address)
    , m_target(new OutcomeLine(this))
    , m_count(new QPushButton(this))
{
    m_target->keepRoom(3); // of two projects with long names
    m_target->setObjectName(QStringLiteral("pushTarget"));
    m_count->setObjectName(QStringLiteral("remarksButton"));
    m_count->setAutoDefault(false);
    m_count->setToolTip(tr("What the Box can't do, or hardly as it was meant"));
    QSizePolicy kept = m_count->sizePolicy(); // the buttons below stay where they are
    kept.setRetainSizeWhenHidden(true);
    m_count->setSizePolicy(kept);
    m_count->hide();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSizeConstraint(QLayout::SetMinimumSize); // or a low page takes the room of the button
    column->addWidget(m_target);
    column->addWidget(m_count, 0, Qt::AlignLeft);
    connect(m_count, &QPushButton::clicked, this, &PushPreview::listRemarks);

    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &PushPreview::refresh);
    connect(address, &QLineEdit::textChanged, this, &PushPreview::showTarget);
    follow();
    showTarget();
}

void PushPreview::follow()
{
    const QItemSelectionModel *selection = m_workspace ? m_workspace->selection() : nullptr;
    if (!selection) {
        return;
    }
    connect(selection, &QItemSelectionModel::currentChanged, this, &PushPreview::refreshSoon);
    const QAbstractItemModel *tree = selection->model();
    connect(tree, &QAbstractItemModel::dataChanged, this, &PushPreview::considerChange);
    connect(tree, &QAbstractItemModel::rowsInserted, this, &PushPreview::considerChange);
    connect(tree, &QAbstractItemModel::rowsRemoved, this, &PushPreview::considerChange);
}

void PushPreview::considerChange(const QModelIndex &parent)
{
    if (!isLive(parent)) {
        m_stale = true;
        refreshSoon();
    }
}

void PushPreview::refreshSoon()
{
    if (!m_timer.isActive()) {
        m_timer.start(burst);
    }
}

void PushPreview::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_stale = true; // also what is valid today may have been so no more for days
    showTarget();
    refreshSoon();
}

QStandardItem *PushPreview::project() const
{
    return m_workspace ? ProjectTree::projectOf(m_workspace->currentItem()) : nullptr;
}

void PushPreview::refresh()
{
    if (!isVisible() && !m_list) {
        return; // until it is shown
    }
    showTarget();
    const QStandardItem *current = project();
    const QModelIndex index = current ? current->index() : QModelIndex();
    if (m_stale || m_checked != index) {
        m_remarks = current
            ? ProjectCheck::remarksOn(m_workspace->buildProjectJson(project()), QDateTime::currentDateTime())
            : QVector<ProjectCheck::Remark>();
        m_checked = index;
        m_stale = false;
        showRemarks();
    }
}

void PushPreview::setOwner(const Owner &owner)
{
    m_owner = owner;
    showTarget();
}

void PushPreview::showTarget()
{
    const QStandardItem *current = project();
    const QStandardItem *owner = m_owner ? m_owner() : nullptr;
    const QString address = m_address->text();
    if (!current) {
        m_target->showLine(tr("Update project pushes nothing: no node is selected in the tree."), false);
    } else if (address.isEmpty()) {
        m_target->showLine(
            tr("Update project would push '%1', but the address above is empty.").arg(current->text()),
            false);
    } else if (owner && owner != current) {
        m_target->showLine(
            tr("Update project pushes '%1' to %2. The Box of this form is in ANOTHER project, '%3'.")
                .arg(current->text(), address, owner->text()),
            true);
    } else {
        m_target->showLine(tr("Update project pushes '%1' to %2.").arg(current->text(), address), false);
    }
}

void PushPreview::showRemarks()
{
    m_count->setText(m_remarks.size() == 1 ? tr("1 remark on this project")
                                           : tr("%1 remarks on this project").arg(m_remarks.size()));
    m_count->setVisible(!m_remarks.isEmpty());
    if (m_list) {
        m_list->setRemarks(m_checked.data().toString(), m_remarks);
    }
}

void PushPreview::listRemarks()
{
    if (!m_list) {
        m_list = new RemarksDialog(this);
        connect(m_list, &RemarksDialog::chosen, this, &PushPreview::selectItemOf);
    }
    m_list->setRemarks(m_checked.data().toString(), m_remarks);
    m_list->show();
    m_list->raise();
    m_list->activateWindow();
}

void PushPreview::selectItemOf(int remark)
{
    QItemSelectionModel *selection = m_workspace->selection();
    const QStandardItem *item = remark >= 0 && remark < m_remarks.size()
        ? ProjectCheck::itemOf(m_remarks.at(remark), ProjectTree::itemAt(m_checked))
        : nullptr;
    if (item && selection) {
        selection->setCurrentIndex(item->index(), QItemSelectionModel::ClearAndSelect);
    }
}

#include "boxes/remarksdialog.h"

#include "widgets/tablecopy.h"

#include <QLabel>
#include <QListWidget>
#include <QStyle>
#include <QVBoxLayout>

RemarksDialog::RemarksDialog(QWidget *parent)
    : QDialog(parent)
    , m_hint(new QLabel(this))
    , m_list(new QListWidget(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    resize(560, 320);
    m_hint->setWordWrap(true);
    m_hint->setBuddy(m_list);
    m_list->setObjectName(QStringLiteral("remarks"));
    m_list->setWordWrap(true);
    TableCopy::install(m_list);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_hint);
    layout->addWidget(m_list);
    const auto choose = [this](const QListWidgetItem *item) { emit chosen(m_list->row(item)); };
    connect(m_list, &QListWidget::itemClicked, this, choose);
    connect(m_list, &QListWidget::itemActivated, this, choose);
}

void RemarksDialog::setRemarks(const QString &project, const QVector<ProjectCheck::Remark> &remarks)
{
    setWindowTitle(tr("Remarks on '%1'").arg(project));
    m_hint->setText(remarks.isEmpty() ? tr("There is no remark on this project.")
                                      : tr("A click on a remark selects in the tree what it is about."));
    const int current = m_list->currentRow();
    m_list->clear();
    for (const ProjectCheck::Remark &remark : remarks) {
        const bool isError = remark.severity == ProjectCheck::Severity::Error;
        const QIcon icon =
            style()->standardIcon(isError ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning);
        m_list->addItem(new QListWidgetItem(icon, remark.line()));
    }
    m_list->setCurrentRow(qMin(current, m_list->count() - 1));
}

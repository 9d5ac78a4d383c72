#include "mainwindow/projectlifecycle.h"

#include "mainwindow/busy.h"
#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "mainwindow/editortabs.h"
#include "model/itemref.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "projects/editprojectdialog.h"
#include "widgets/tell.h"

#include <QDebug>
#include <QFileInfo>
#include <QStandardItemModel>
#include <QTreeView>

ProjectLifecycle::ProjectLifecycle(CMainWindow *window, EditorTabs *tabs)
    : m_window(window)
    , m_tabs(tabs)
{
}

void ProjectLifecycle::warn(const QString &text) const
{
    Tell::warning(m_window, CMainWindow::tr("Warning"), text);
}

void ProjectLifecycle::create(const QString &name, const QString &path, const QString &description) const
{
    if (QFileInfo::exists(path + QLatin1Char('/') + name + QLatin1String(".json"))) {
        warn(CMainWindow::tr("A project with the same name already exists in the selected directory. "
                             "Please use a different name."));
        return;
    }
    if (ProjectTree::projectNamed(*m_window->projectModel(), name)) {
        warn(CMainWindow::tr("A project with the same name already exists. Please use a different name."));
        return;
    }
    QStandardItem *project = ProjectTree::makeProject(name, path, description);
    m_window->projectModel()->appendRow(project);
    ProjectTree::appendMissingFolders(project);
    const QString service = QStringLiteral("IEC61850");
    ProjectTree::appendDefinition(ProjectTree::childNamed(project, ProjectTree::serviceFolder), service,
                                  ProjectTree::serviceIcon, {{serviceProtocolRole, service}});
    if (QTreeView *tree = m_window->projectTree()) {
        tree->expandAll();
    }
}

void ProjectLifecycle::edit() const
{
    QStandardItem *project = m_window->currentItem();
    if (!project) {
        return;
    }
    const QString title = EditorTabs::titleOf(EditorTabs::projectTitle);
    if (ads::CDockWidget *open = m_tabs->find(title)) {
        open->closeDockWidget();
    }
    auto *form = new EditProjectDialog(QStringLiteral("Default Name"), QStringLiteral("Default Path"),
                                       QStringLiteral("Default Description"));
    form->setName(project->text());
    form->setPath(project->data(projectPathRole).toString());
    form->setDescription(project->data(projectDescriptionRole).toString());
    ads::CDockWidget *tab = m_tabs->make(title, form);
    connectForm(form, project);
    // Twice on purpose: to close a tab again is harmless, and who listens to its closing hears both.
    QObject::connect(form, &QDialog::finished, tab, &ads::CDockWidget::closeDockWidget);
    QObject::connect(
        form, &QDialog::finished, form, [tab] { tab->closeDockWidget(); }, Qt::DirectConnection);
    m_tabs->place(
        tab, EditorTabs::titlesOf({EditorTabs::boxTitle, EditorTabs::serverTitle, EditorTabs::plcTitle}));
}

void ProjectLifecycle::connectForm(EditProjectDialog *form, QStandardItem *project) const
{
    QObject::connect(
        form, &EditProjectDialog::projectModified, form,
        [this, edited = ItemRef(project)](const QString &name, const QString &path,
                                          const QString &description) {
            modify(edited.item(), name, path, description);
        },
        Qt::DirectConnection);
}

void ProjectLifecycle::modify(QStandardItem *project, const QString &name, const QString &path,
                              const QString &description) const
{
    if (!project) {
        return; // its row has left the tree
    }
    for (int row = 0; row < m_window->projectModel()->rowCount(); ++row) {
        const QStandardItem *other = m_window->projectModel()->item(row);
        if (other && other != project && other->text() == name) {
            warn(
                CMainWindow::tr("A project with the same name already exists. Please use a different name."));
            return;
        }
    }
    project->setText(name);
    project->setData(path, projectPathRole);
    project->setData(description, projectDescriptionRole);
    m_window->appendMessage(CMainWindow::tr("The Project '%1' is saved successfully.").arg(name));
}

void ProjectLifecycle::close() const
{
    const QModelIndex index =
        m_window->projectTree() ? m_window->projectTree()->currentIndex() : QModelIndex();
    if (!index.isValid() || index.parent().isValid()) {
        return;
    }
    const auto answer =
        Tell::question(m_window, CMainWindow::tr("Save Changes"),
                       CMainWindow::tr("Do you want to save changes before deleting the project?"),
                       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        if (QStandardItem *project = m_window->currentItem()) {
            m_window->saveJsonFile(project);
        } else {
            qDebug() << "No project selected.";
        }
    }
    if (answer == QMessageBox::Yes || answer == QMessageBox::No) {
        const Busy busy;
        m_window->projectModel()->removeRow(index.row());
    }
    // Also after "Cancel", on purpose: the command ends all editing, and "Cancel" keeps the project only.
    m_tabs->closeAll(
        EditorTabs::titlesOf({EditorTabs::serviceTitle, EditorTabs::projectTitle, EditorTabs::plcTitle,
                              EditorTabs::serverTitle, EditorTabs::boxTitle, EditorTabs::standardTitle}));
}

void ProjectLifecycle::saveAllIfWanted() const
{
    if (m_window->projectModel()->rowCount() == 0) {
        qDebug() << "No projects found. Aborting close project operation.";
        return;
    }
    const auto answer =
        Tell::question(m_window, CMainWindow::tr("Save Changes"),
                       CMainWindow::tr("Do you want to save all projects before closing them?"),
                       QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes) {
        m_window->saveProjectAllFile();
    }
}

ProjectLifecycle::Exit ProjectLifecycle::confirmExit() const
{
    if (m_window->projectModel()->rowCount() == 0) {
        qDebug() << "No projects found. Closing without prompt.";
        return Exit::LeaveUnasked;
    }
    const auto answer =
        Tell::question(m_window, CMainWindow::tr("Save Changes"),
                       CMainWindow::tr("Do you want to save all projects before closing them?"),
                       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        m_window->saveProjectAllFile();
    }
    return answer == QMessageBox::Yes || answer == QMessageBox::No ? Exit::Leave : Exit::Stay;
}

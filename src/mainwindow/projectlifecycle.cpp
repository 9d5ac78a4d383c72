#include "mainwindow/projectlifecycle.h"

#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "mainwindow/editortabs.h"
#include "mainwindow/windowtr.h"
#include "model/editprojectdialog.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QDebug>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardItemModel>

ProjectLifecycle::ProjectLifecycle(WindowParts parts)
    : m_parts(std::move(parts))
{
}

void ProjectLifecycle::warn(const QString &text) const
{
    QMessageBox::warning(m_parts.window, WindowTr::tr("Warning"), text);
}

void ProjectLifecycle::create(const QString &name, const QString &path, const QString &description) const
{
    if (QFileInfo::exists(path + QLatin1Char('/') + name + QLatin1String(".json"))) {
        warn(WindowTr::tr("A project with the same name already exists in the selected directory. "
                          "Please use a different name."));
        return;
    }
    if (ProjectTree::projectNamed(*m_parts.model, name)) {
        warn(WindowTr::tr("A project with the same name already exists. Please use a different name."));
        return;
    }
    QStandardItem *project = ProjectTree::makeProject(name, path, description);
    m_parts.model->appendRow(project);
    ProjectTree::appendMissingFolders(project);
    const QString service = QStringLiteral("IEC61850");
    QStandardItem *serviceItem = ProjectTree::appendDefinition(
        ProjectTree::childNamed(project, ProjectTree::serviceFolder), service, ProjectTree::serviceIcon);
    serviceItem->setData(service, serviceProtocolRole);
    m_parts.tree->expandAll();
}

void ProjectLifecycle::edit() const
{
    QStandardItem *project = m_parts.currentItem();
    if (!project) {
        return;
    }
    const QString title = EditorTabs::titleOf(EditorTabs::projectTitle);
    if (ads::CDockWidget *open = m_parts.tabs->find(title)) {
        open->closeDockWidget();
    }
    auto *form = new EditProjectDialog(QStringLiteral("Default Name"), QStringLiteral("Default Path"),
                                       QStringLiteral("Default Description"));
    form->setName(project->text());
    form->setPath(project->data(projectPathRole).toString());
    form->setDescription(project->data(projectDescriptionRole).toString());
    ads::CDockWidget *tab = m_parts.tabs->make(title, form);
    connectForm(form, project);
    QObject::connect(form, &QDialog::finished, tab, [tab] { tab->closeDockWidget(); });
    m_parts.tabs->place(
        tab, EditorTabs::titlesOf({EditorTabs::boxTitle, EditorTabs::serverTitle, EditorTabs::plcTitle}));
}

void ProjectLifecycle::connectForm(EditProjectDialog *form, QStandardItem *project) const
{
    const QPersistentModelIndex index(project->index());
    QObject::connect(
        form, &EditProjectDialog::projectModified, form,
        [this, index](const QString &name, const QString &path, const QString &description) {
            modify(m_parts.model->itemFromIndex(index), name, path, description);
        },
        Qt::DirectConnection);
}

void ProjectLifecycle::modify(QStandardItem *project, const QString &name, const QString &path,
                              const QString &description) const
{
    if (!project) {
        return; // its row has left the tree
    }
    for (int row = 0; row < m_parts.model->rowCount(); ++row) {
        const QStandardItem *other = m_parts.model->item(row);
        if (other != project && other->text() == name) {
            warn(WindowTr::tr("A project with the same name already exists. Please use a different name."));
            return;
        }
    }
    project->setText(name);
    project->setData(path, projectPathRole);
    project->setData(description, projectDescriptionRole);
    m_parts.window->appendMessage(WindowTr::tr("The Project '%1' is saved successfully.").arg(name));
}

void ProjectLifecycle::close() const
{
    const QModelIndex index = m_parts.tree ? m_parts.tree->currentIndex() : QModelIndex();
    if (!index.isValid() || index.parent().isValid()) {
        return;
    }
    const auto answer = QMessageBox::question(
        m_parts.window, WindowTr::tr("Save Changes"),
        WindowTr::tr("Do you want to save changes before deleting the project?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        if (QStandardItem *project = m_parts.currentItem()) {
            m_parts.window->saveJsonFile(project);
        } else {
            qDebug() << "No project selected.";
        }
    }
    if (answer == QMessageBox::Yes || answer == QMessageBox::No) {
        m_parts.model->removeRow(index.row());
    }
    // Also after "Cancel", on purpose: the command ends all editing, and "Cancel" keeps the project only.
    m_parts.tabs->closeAll(EditorTabs::titlesOf({EditorTabs::serviceTitle, EditorTabs::projectTitle,
                                                 EditorTabs::plcTitle, EditorTabs::serverTitle,
                                                 EditorTabs::boxTitle, EditorTabs::standardTitle}));
}

void ProjectLifecycle::saveAllIfWanted() const
{
    if (m_parts.model->rowCount() == 0) {
        qDebug() << "No projects found. Aborting close project operation.";
        return;
    }
    const auto answer = QMessageBox::question(
        m_parts.window, WindowTr::tr("Save Changes"),
        WindowTr::tr("Do you want to save all projects before closing them?"));
    if (answer == QMessageBox::Yes) {
        m_parts.window->saveProjectAllFile();
    }
}

ProjectLifecycle::Exit ProjectLifecycle::confirmExit() const
{
    if (m_parts.model->rowCount() == 0) {
        qDebug() << "No projects found. Closing without prompt.";
        return Exit::LeaveUnasked;
    }
    const auto answer = QMessageBox::question(
        m_parts.window, WindowTr::tr("Save Changes"),
        WindowTr::tr("Do you want to save all projects before closing them?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        m_parts.window->saveProjectAllFile();
    }
    return answer == QMessageBox::Yes || answer == QMessageBox::No ? Exit::Leave : Exit::Stay;
}

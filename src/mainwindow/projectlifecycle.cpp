#include "mainwindow/projectlifecycle.h"

#include "definitions/protocols.h"
#include "mainwindow/busy.h"
#include "mainwindow/docking.h"
#include "mainwindow/editortabs.h"
#include "mainwindow/projectfiles.h"
#include "mainwindow/windowtext.h"
#include "model/itemref.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "projects/editprojectdialog.h"
#include "widgets/tell.h"

#include <QDebug>
#include <QFileInfo>
#include <QStandardItemModel>
#include <QTreeView>

ProjectLifecycle::ProjectLifecycle(QStandardItemModel *model, QTreeView *tree, EditorTabs *tabs,
                                   ProjectFiles *files, QWidget *window)
    : QObject(window)
    , m_model(model)
    , m_tree(tree)
    , m_tabs(tabs)
    , m_files(files)
    , m_window(window)
{
}

QStandardItem *ProjectLifecycle::currentItem() const
{
    return m_tree ? ProjectTree::itemAt(m_tree->currentIndex()) : nullptr;
}

void ProjectLifecycle::warn(const QString &text)
{
    Tell::warning(m_window, WindowText::tr("Warning"), text);
}

void ProjectLifecycle::create(const QString &name, const QString &path, const QString &description)
{
    if (QFileInfo::exists(path + QLatin1Char('/') + name + QLatin1String(".json"))) {
        warn(WindowText::tr("A project with the same name already exists in the selected directory. "
                            "Please use a different name."));
        return;
    }
    if (ProjectTree::projectNamed(*m_model, name)) {
        warn(WindowText::tr("A project with the same name already exists. Please use a different name."));
        return;
    }
    QStandardItem *project = ProjectTree::makeProject(name, path, description);
    m_model->appendRow(project);
    ProjectTree::appendMissingFolders(project);
    const QString service = Protocols::iec61850;
    ProjectTree::appendDefinition(ProjectTree::childNamed(project, ProjectTree::serviceFolder), service,
                                  ProjectTree::serviceIcon, {{serviceProtocolRole, service}});
    if (m_tree) {
        m_tree->expandAll();
    }
}

void ProjectLifecycle::edit()
{
    QStandardItem *project = currentItem();
    if (!project) {
        return;
    }
    if (ads::CDockWidget *open = m_tabs->find(EditorTab::Project)) {
        open->closeDockWidget();
    }
    auto *form = new EditProjectDialog(QStringLiteral("Default Name"), QStringLiteral("Default Path"),
                                       QStringLiteral("Default Description"));
    form->setName(project->text());
    form->setPath(project->data(projectPathRole).toString());
    form->setDescription(project->data(projectDescriptionRole).toString());
    ads::CDockWidget *tab = m_tabs->make(EditorTab::Project, form);
    connectForm(form, project);
    // Compat: twice, which who listens to the closing hears; to close a tab again is harmless.
    connect(form, &QDialog::finished, tab, &ads::CDockWidget::closeDockWidget);
    connect(
        form, &QDialog::finished, form, [tab] { tab->closeDockWidget(); }, Qt::DirectConnection);
    m_tabs->place(tab, EditorTab::Project);
}

void ProjectLifecycle::connectForm(EditProjectDialog *form, QStandardItem *project)
{
    connect(
        form, &EditProjectDialog::projectModified, form,
        [this, edited = ItemRef(project)](const QString &name, const QString &path,
                                          const QString &description) {
            modify(edited.item(), name, path, description);
        },
        Qt::DirectConnection);
}

void ProjectLifecycle::modify(QStandardItem *project, const QString &name, const QString &path,
                              const QString &description)
{
    if (!project) {
        return; // its row has left the tree
    }
    if (ProjectTree::projectNamed(*m_model, name, project)) {
        warn(WindowText::tr("A project with the same name already exists. Please use a different name."));
        return;
    }
    project->setText(name);
    project->setData(path, projectPathRole);
    project->setData(description, projectDescriptionRole);
    emit message(WindowText::tr("The Project '%1' is saved successfully.").arg(name));
}

void ProjectLifecycle::close()
{
    const QModelIndex index = m_tree ? m_tree->currentIndex() : QModelIndex();
    if (!index.isValid() || index.parent().isValid()) {
        return;
    }
    const auto answer =
        Tell::question(m_window, WindowText::tr("Save Changes"),
                       WindowText::tr("Do you want to save changes before deleting the project?"),
                       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        if (QStandardItem *project = currentItem()) {
            m_files->saveProject(project);
        } else {
            qDebug() << "No project selected.";
        }
    }
    if (answer == QMessageBox::Yes || answer == QMessageBox::No) {
        const Busy busy;
        m_model->removeRow(index.row());
    }
    // Compat: also after "Cancel", which keeps the project and not the tabs.
    m_tabs->closeAll();
}

void ProjectLifecycle::saveAllIfWanted()
{
    if (m_model->rowCount() == 0) {
        qDebug() << "No projects found. Aborting close project operation.";
        return;
    }
    offerToSaveAll(QMessageBox::Yes | QMessageBox::No);
}

ProjectLifecycle::Exit ProjectLifecycle::confirmExit() const
{
    if (m_model->rowCount() == 0) {
        qDebug() << "No projects found. Closing without prompt.";
        return Exit::LeaveUnasked;
    }
    const auto answer = offerToSaveAll(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    return answer == QMessageBox::Yes || answer == QMessageBox::No ? Exit::Leave : Exit::Stay;
}

QMessageBox::StandardButton ProjectLifecycle::offerToSaveAll(QMessageBox::StandardButtons answers) const
{
    const auto answer =
        Tell::question(m_window, WindowText::tr("Save Changes"),
                       WindowText::tr("Do you want to save all projects before closing them?"), answers);
    if (answer == QMessageBox::Yes) {
        m_files->saveAll();
    }
    return answer;
}

#include "mainwindow/projectfiles.h"

#include "document/projectfile.h"
#include "document/projectreader.h"
#include "mainwindow/busy.h"
#include "mainwindow/windowtext.h"
#include "widgets/tell.h"

#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardItemModel>
#include <QTreeView>

namespace {

SaveResult saveBusily(const QStandardItem *project)
{
    const Busy busy;
    return ::saveProject(project);
}

} // namespace

ProjectFiles::ProjectFiles(QWidget *dialogParent, QStandardItemModel *model, QTreeView *view)
    : QObject(dialogParent)
    , m_dialogParent(dialogParent)
    , m_model(model)
    , m_view(view)
{
}

void ProjectFiles::saveProject(QStandardItem *project)
{
    if (!project) {
        qDebug() << "No project selected.";
        return;
    }
    const SaveResult result = saveBusily(project);
    if (result.ok()) {
        inform(WindowText::tr("Save Successful"),
               WindowText::tr("JSON data saved to file:\n%1").arg(result.path));
    }
}

void ProjectFiles::saveAll()
{
    const QStandardItem *root = m_model ? m_model->invisibleRootItem() : nullptr;
    if (!root) {
        qDebug() << "Root item not found.";
        return;
    }
    for (int row = 0; row < root->rowCount(); ++row) {
        if (QStandardItem *project = root->child(row)) {
            saveProject(project);
        }
    }
}

void ProjectFiles::load()
{
    loadFile(QFileDialog::getOpenFileName(m_dialogParent, WindowText::tr("Open JSON File"), QDir::homePath(),
                                          WindowText::tr("JSON Files (*.json)")));
}

void ProjectFiles::loadFile(const QString &path)
{
    {
        const Busy busy;
        const std::optional<QJsonObject> document = readProjectFile(path);
        if (!document) {
            return;
        }
        loadProject(*m_model, *document, QFileInfo(path).absolutePath());
        if (m_view) {
            m_view->expandAll();
        }
    }
    inform(WindowText::tr("Load Successful"), WindowText::tr("JSON data loaded from file:\n%1").arg(path));
}

void ProjectFiles::inform(const QString &title, const QString &text)
{
    Tell::information(m_dialogParent, title, text);
}

#include "mainwindow/pointimport.h"

#include "document/datapoints.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "servers/importdatadialog.h"
#include "servers/pointform.h"
#include "servers/serveropcuaeditdialog.h"

#include <QDebug>
#include <QStandardItemModel>
#include <QTreeView>

PointImport::PointImport(QTreeView *tree, QWidget *window)
    : QObject(window)
    , m_tree(tree)
    , m_window(window)
{
}

ImportDataDialog *PointImport::open()
{
    auto *dialog = new ImportDataDialog(m_window);
    const QStandardItem *project =
        m_tree ? ProjectTree::projectOf(ProjectTree::itemAt(m_tree->currentIndex())) : nullptr;
    if (!project) {
        // Compat: never shown, the dialog is not freed before the window is.
        qDebug() << "No project selected.";
        return nullptr;
    }
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setProjectName(project->text());
    dialog->setProjectDescription(project->data(projectDescriptionRole).toString());
    const DataPoints::Lists lists = DataPoints::collect(*project);
    for (auto list = lists.cbegin(); list != lists.cend(); ++list) {
        dialog->addPoints(list.key(), list.value());
    }
    dialog->buildTree(*project->model(), project->text());
    dialog->show();
    return dialog;
}

QDialog *PointImport::receiver() const
{
    return m_receiver;
}

void PointImport::considerForm(QDialog *form)
{
    // Compat: also the form of the OPC UA server, which takes none, so that the form before it gets no more.
    if (qobject_cast<PointForm *>(form) || qobject_cast<ServerOPCUAEditDialog *>(form)) {
        m_receiver = form;
    }
}

void PointImport::deliver(const QList<QJsonObject> &points, const QString &currentPLC)
{
    if (auto *form = qobject_cast<PointForm *>(m_receiver.data())) {
        form->handleImportedData(points, currentPLC);
    }
}

#include "mainwindow/pointimport.h"

#include "document/datapoints.h"
#include "mainwindow/cmainwindow.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "servers/importdatadialog.h"
#include "servers/pointform.h"

#include <QDebug>
#include <QStandardItemModel>

namespace PointImport {

void open(CMainWindow *window)
{
    auto *dialog = new ImportDataDialog(window);
    const QStandardItem *project = ProjectTree::projectOf(window->currentItem());
    if (!project) {
        // Compat: never shown, the dialog is not freed before the window is.
        qDebug() << "No project selected.";
        return;
    }
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setProjectName(project->text());
    dialog->setProjectDescription(project->data(projectDescriptionRole).toString());
    const DataPoints::Lists lists = DataPoints::collect(*project);
    for (auto list = lists.cbegin(); list != lists.cend(); ++list) {
        dialog->addPoints(list.key(), list.value());
    }
    dialog->buildTree(*window->projectModel(), project->text());
    dialog->show();
    QObject::connect(dialog, &ImportDataDialog::dataSelected, window, &CMainWindow::handleImportedData);
}

void deliver(QDialog *form, const QList<QJsonObject> &points, const QString &currentPLC)
{
    if (auto *receiver = qobject_cast<PointForm *>(form)) {
        receiver->handleImportedData(points, currentPLC);
    }
}

} // namespace PointImport

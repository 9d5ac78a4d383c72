// The slots of the main window that act on the project tree; each hands over to the collaborator that does
// it.

#include "mainwindow/cmainwindow.h"

#include "boxes/boxsearchdialog.h"
#include "document/plcdocument.h"
#include "document/projectreader.h"
#include "document/serverdocument.h"
#include "mainwindow/pointimport.h"
#include "mainwindow/projectfiles.h"
#include "mainwindow/projectlifecycle.h"
#include "mainwindow/projecttreemenu.h"
#include "mainwindow/resourceactions.h"
#include "monitoring/monitoringview.h"
#include "projects/newprojectdialog.h"

#include <QDialog>
#include <QStandardItemModel>

void CMainWindow::prjectTreeView_MenuPopup(const QPoint &pos)
{
    m_treeMenu->popUp(pos);
}

void CMainWindow::prjectTreeView_clicked(QModelIndex index)
{
    m_treeMenu->click(index);
}

void CMainWindow::prjectTreeView_pressed(QModelIndex index)
{
    const QStandardItem *item = m_model->itemFromIndex(index);
    Q_UNUSED(item)
}

void CMainWindow::prjectTreeView_doubleClicked(QModelIndex index)
{
    const QStandardItem *item = m_model->itemFromIndex(index);
    Q_UNUSED(item)
}

void CMainWindow::slotNewProject()
{
    NewProjectDialog dialog(this);
    connect(&dialog, &NewProjectDialog::projectCreated, this, &CMainWindow::handleProjectCreated);
    dialog.exec();
}

void CMainWindow::handleProjectCreated(const QString &name, const QString &path, const QString &description)
{
    m_projects->create(name, path, description);
}

void CMainWindow::slotEditProject()
{
    m_projects->edit();
}

void CMainWindow::slotDeleteProject()
{
    m_projects->close();
}

void CMainWindow::slotCloseProject()
{
    m_projects->saveAllIfWanted();
}

void CMainWindow::loadJsonFile()
{
    m_files->load();
}

void CMainWindow::saveJsonFile(QStandardItem *selectedItem)
{
    m_files->saveProject(selectedItem);
}

void CMainWindow::saveProjectFile()
{
    m_files->saveProject(currentItem());
}

void CMainWindow::saveProjectAllFile()
{
    m_files->saveAll();
}

void CMainWindow::transmitStandardDataToEditDialog(const QJsonObject &standardObj,
                                                   QStandardItem *standardFileItem)
{
    transmitStandardData(standardObj, standardFileItem);
}

void CMainWindow::transmitServiceDataToEditDialog(const QJsonObject &serviceObj,
                                                  QStandardItem *serviceFileItem)
{
    transmitServiceData(serviceObj, serviceFileItem);
}

void CMainWindow::transmitBoxDataToEditDialog(const QJsonObject &boxObj, QStandardItem *boxFileItem)
{
    transmitBoxData(boxObj, boxFileItem);
}

void CMainWindow::transmitPLCDataToEditDialog(const QJsonObject &plcObj, QStandardItem *plcFileItem)
{
    transmitPlcData(plcObj, plcFileItem);
}

void CMainWindow::transmitServerDataToEditDialog(const QJsonObject &serverObj, QStandardItem *serverFileItem)
{
    transmitServerData(serverObj, serverFileItem);
}

void CMainWindow::standardAddFile()
{
    m_resources->add(ResourceKinds::addStandard());
}

void CMainWindow::boxAddFile()
{
    m_resources->add(ResourceKinds::addBox());
}

void CMainWindow::boxSearchFile()
{
    auto *dialog = new BoxSearchDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void CMainWindow::slotstandardEditFile()
{
    m_resources->edit(ResourceKinds::editStandard());
}

void CMainWindow::slotServiceEditFile()
{
    m_resources->edit(ResourceKinds::editService());
}

void CMainWindow::slotBoxEditFile()
{
    m_resources->edit(ResourceKinds::editBox());
}

void CMainWindow::slotDeleteFile()
{
    m_resources->remove();
}

void CMainWindow::slotDeleteAllFile()
{
    m_resources->removeAll();
}

void CMainWindow::plcAddFile()
{
    m_resources->add(ResourceKinds::addPlc());
}

void CMainWindow::slotPLCEditFile()
{
    m_resources->edit(ResourceKinds::editPlc());
}

void CMainWindow::serverAddFile()
{
    m_resources->add(ResourceKinds::addServer());
}

void CMainWindow::slotServerEditFile()
{
    m_resources->edit(ResourceKinds::editServer());
}

QDialog *CMainWindow::currentServerForm() const
{
    return m_currentServerForm;
}

void CMainWindow::setCurrentServerForm(QDialog *form)
{
    m_currentServerForm = form;
}

void CMainWindow::openImportDataDialog()
{
    PointImport::open(this);
}

void CMainWindow::handleImportedData(const QList<QJsonObject> &points, const QString &currentPLC)
{
    PointImport::deliver(m_currentServerForm, points, currentPLC);
}

void CMainWindow::onDataReceived(const Protocol::dataMonitoringData &report)
{
    m_monitoring->receive(report);
}

void CMainWindow::showDataInTable(QStandardItem *item, const QString &time, const QString &plcName)
{
    m_monitoring->showData(item, time, plcName);
}

void CMainWindow::closeTabByName(const QString &tabName)
{
    m_monitoring->closeTab(tabName);
}

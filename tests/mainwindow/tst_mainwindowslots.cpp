#include "model/itemroles.h"
#include "windowundertest.h"

class TestMainWindowSlots : public QObject
{
    Q_OBJECT
private slots:
    void slotsAreFoundByName_data();
    void slotsAreFoundByName();
    void readerSlotsFillOneItem();
    void listRolesAreKnownByName();
};

void TestMainWindowSlots::slotsAreFoundByName_data()
{
    QTest::addColumn<QByteArray>("signature");
    for (const char *signature : {
             "on_actionSaveState_triggered(bool)",
             "on_actionRestoreState_triggered(bool)",
             "savePerspective()",
             "onViewToggled(bool)",
             "onViewVisibilityChanged(bool)",
             "aboutActionTriggered()",
             "applyVsStyle()",
             "CESwitching()",
             "createEditor()",
             "createTable()",
             "createImageViewer()",
             "showStatusDialog()",
             "toggleDockWidgetWindowTitle()",
             "onEditorCloseRequested()",
             "onImageViewerCloseRequested()",
             "prjectTreeView_MenuPopup(QPoint)",
             "prjectTreeView_clicked(QModelIndex)",
             "prjectTreeView_pressed(QModelIndex)",
             "prjectTreeView_doubleClicked(QModelIndex)",
             "slotNewProject()",
             "handleProjectCreated(QString,QString,QString)",
             "slotEditProject()",
             "slotDeleteProject()",
             "slotCloseProject()",
             "loadJsonFile()",
             "saveJsonFile(QStandardItem*)",
             "saveProjectFile()",
             "saveProjectAllFile()",
             "transmitStandardDataToEditDialog(QJsonObject,QStandardItem*)",
             "transmitServiceDataToEditDialog(QJsonObject,QStandardItem*)",
             "transmitBoxDataToEditDialog(QJsonObject,QStandardItem*)",
             "transmitServerDataToEditDialog(QJsonObject,QStandardItem*)",
             "standardAddFile()",
             "boxAddFile()",
             "boxSearchFile()",
             "slotstandardEditFile()",
             "slotServiceEditFile()",
             "slotBoxEditFile()",
             "slotDeleteFile()",
             "slotDeleteAllFile()",
             "openImportDataDialog()",
             "handleImportedData(QList<QJsonObject>,QString)",
             "transmitPLCDataToEditDialog(QJsonObject,QStandardItem*)",
             "plcAddFile()",
             "slotPLCEditFile()",
             "serverAddFile()",
             "slotServerEditFile()",
             "closeTabByName(QString)",
             "onDataReceived(Protocol::dataMonitoringData)",
         }) {
        QTest::newRow(signature) << QByteArray(signature);
    }
}

void TestMainWindowSlots::slotsAreFoundByName()
{
    QFETCH(QByteArray, signature);
    const QMetaObject &window = CMainWindow::staticMetaObject;
    const int index = window.indexOfSlot(signature);
    QVERIFY(index >= 0);
    QCOMPARE(window.method(index).access(), QMetaMethod::Public);
}

void TestMainWindowSlots::readerSlotsFillOneItem()
{
    WindowUnderTest window;
    QStandardItem item;
    const QJsonObject ip{{"ip", "10.0.0.1"}};
    const QJsonObject protocol{{"protocol", "DIDO"}};
    QVERIFY(QMetaObject::invokeMethod(&window, "transmitBoxDataToEditDialog", Q_ARG(QJsonObject, ip),
                                      Q_ARG(QStandardItem *, &item)));
    QCOMPARE(item.data(boxIpRole).toString(), "10.0.0.1");
    QVERIFY(QMetaObject::invokeMethod(&window, "transmitStandardDataToEditDialog",
                                      Q_ARG(QJsonObject, protocol), Q_ARG(QStandardItem *, &item)));
    QCOMPARE(item.data(standardProtocolRole).toString(), "DIDO");
    QVERIFY(QMetaObject::invokeMethod(&window, "transmitServiceDataToEditDialog",
                                      Q_ARG(QJsonObject, protocol), Q_ARG(QStandardItem *, &item)));
    QCOMPARE(item.data(serviceProtocolRole).toString(), "DIDO");
}

void TestMainWindowSlots::listRolesAreKnownByName()
{
    const WindowUnderTest window;
    QCOMPARE(QMetaType::type("QList<QVariantList>"), qMetaTypeId<QList<QVariantList>>());
    QCOMPARE(QMetaType::type("QMap<QString,QList<QVariantList>>"), qMetaTypeId<GroupMap>());
    QCOMPARE(QMetaType::type("QList<QJsonObject>"), qMetaTypeId<QList<QJsonObject>>());
}

QTEST_MAIN(TestMainWindowSlots)
#include "tst_mainwindowslots.moc"

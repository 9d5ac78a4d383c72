#include "mainwindow/resourcekinds.h"

#include "boxes/boxeditdialog.h"
#include "boxes/boxinputdialog.h"
#include "definitions/protocols.h"
#include "definitions/serverprotocols.h"
#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "mainwindow/editortabs.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "plc/plceditdialog.h"
#include "plc/plcinputdialog.h"
#include "servers/serveralimqtteditdialog.h"
#include "servers/servereditdialog.h"
#include "servers/serverhj212editdialog.h"
#include "servers/serverhuaweimqtteditdialog.h"
#include "servers/serverinputdialog.h"
#include "servers/servermodbustcpeditdialog.h"
#include "servers/serveronenetmqtteditdialog.h"
#include "servers/serveropcuaeditdialog.h"
#include "servers/serversl651editdialog.h"
#include "services/serviceiec61850editdialog.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardinputdialog.h"
#include "standards/standardmodbuseditdialog.h"

#include <QLineEdit>
#include <QPushButton>
#include <QStandardItem>

namespace ResourceKinds {

namespace {

using ConnectTab = void (*)(QDialog *, QStandardItem *, ads::CDockWidget *, CMainWindow *);

template <typename Form> void rebind(QWidget *open, QStandardItem *item)
{
    static_cast<Form *>(open)->replaceItem(item);
}

// The session moves to the other Box along with the fields.
template <> void rebind<BoxEditDialog>(QWidget *open, QStandardItem *item)
{
    auto *box = static_cast<BoxEditDialog *>(open);
    box->replaceItem(item);
    box->disconnectFromServer();
    box->connectToServer();
}

template <typename Form> FormClass formClass(const QString &subKind, ConnectTab connectTab = nullptr)
{
    return {subKind,
            [](QStandardItem *item, Workspace *workspace) -> QDialog * { return new Form(item, workspace); },
            [](const QWidget *open) { return open && open->metaObject() == &Form::staticMetaObject; },
            rebind<Form>, connectTab};
}

template <typename Form>
void connectRename(QDialog *form, QStandardItem *item, ads::CDockWidget *tab, CMainWindow *window)
{
    auto *typed = static_cast<Form *>(form);
    EditorTabs::renameOnSave(
        {typed, typed->nameEdit(), typed->saveButton(), [typed] { typed->saveChanges(); }}, item, tab,
        window);
}

void connectBox(QDialog *form, QStandardItem *item, ads::CDockWidget *tab, CMainWindow *window)
{
    auto *box = static_cast<BoxEditDialog *>(form);
    QObject::connect(box, &BoxEditDialog::sendDataToMainWindow, window, &CMainWindow::onDataReceived);
    QObject::connect(tab, &QObject::destroyed, box, &BoxEditDialog::disconnectFromServer);
    connectRename<BoxEditDialog>(form, item, tab, window);
}

void makeCurrentServer(QDialog *form, QStandardItem *, ads::CDockWidget *, CMainWindow *window)
{
    window->setCurrentServerForm(form);
}

} // namespace

const FormClass *EditKind::formFor(const QStandardItem *item) const
{
    const QString subKind = subKindRole == noSubKind ? QString() : item->data(subKindRole).toString();
    for (const FormClass &form : forms) {
        if (form.subKind == subKind) {
            return &form;
        }
    }
    return nullptr;
}

const EditKind &editBox()
{
    static const EditKind kind{EditorTabs::boxTitle,
                               EditKind::noSubKind,
                               {formClass<BoxEditDialog>(QString(), connectBox)},
                               {EditorTabs::serviceTitle, EditorTabs::standardTitle, EditorTabs::serverTitle,
                                EditorTabs::plcTitle, EditorTabs::projectTitle}};
    return kind;
}

const EditKind &editPlc()
{
    static const EditKind kind{EditorTabs::plcTitle,
                               EditKind::noSubKind,
                               {formClass<PLCEditDialog>(QString())},
                               {EditorTabs::serviceTitle, EditorTabs::standardTitle, EditorTabs::boxTitle,
                                EditorTabs::serverTitle, EditorTabs::projectTitle}};
    return kind;
}

const EditKind &editStandard()
{
    static const EditKind kind{EditorTabs::standardTitle,
                               standardProtocolRole,
                               {formClass<standardDLT645EditDialog>(QStringLiteral("DLT645"),
                                                                    connectRename<standardDLT645EditDialog>),
                                formClass<standardModbusEditDialog>(QStringLiteral("Modbus"),
                                                                    connectRename<standardModbusEditDialog>)},
                               {EditorTabs::serviceTitle, EditorTabs::plcTitle, EditorTabs::boxTitle,
                                EditorTabs::serverTitle, EditorTabs::projectTitle}};
    return kind;
}

const EditKind &editService()
{
    static const EditKind kind{EditorTabs::serviceTitle,
                               serviceProtocolRole,
                               {formClass<ServiceIEC61850EditDialog>(QStringLiteral("IEC61850"))},
                               {EditorTabs::standardTitle, EditorTabs::plcTitle, EditorTabs::boxTitle,
                                EditorTabs::serverTitle, EditorTabs::projectTitle}};
    return kind;
}

const EditKind &editServer()
{
    static const EditKind kind{
        EditorTabs::serverTitle,
        serverProtocolRole,
        {formClass<ServerEditDialog>(QStringLiteral("MQTT")),
         formClass<ServerAliMQTTEditDialog>(QStringLiteral("AliMQTT")),
         formClass<ServerOneNetMQTTEditDialog>(QStringLiteral("OneNetMQTT")),
         formClass<ServerHuaWeiMQTTEditDialog>(QStringLiteral("HuaWeiMQTT")),
         formClass<ServerModbusTCPEditDialog>(QStringLiteral("ModbusTCP(Slave)"), makeCurrentServer),
         formClass<ServerHJ212EditDialog>(QStringLiteral("HJ212"), makeCurrentServer),
         formClass<ServerSL651EditDialog>(QStringLiteral("SL651"), makeCurrentServer),
         formClass<ServerOPCUAEditDialog>(QStringLiteral("OpcUaServer"), makeCurrentServer)},
        {EditorTabs::serviceTitle, EditorTabs::standardTitle, EditorTabs::boxTitle, EditorTabs::plcTitle,
         EditorTabs::projectTitle}};
    return kind;
}

const AddKind &addBox()
{
    static const AddKind kind{
        [](QWidget *window, const QStandardItem *, const AddKind::Take &take) {
            BoxInputDialog dialog(window);
            if (dialog.exec() == QDialog::Accepted) {
                take({dialog.name(),
                      ProjectTree::boxIcon,
                      {{boxIpRole, dialog.ip()}, {boxModelRole, dialog.model()}}});
            }
        },
        QT_TRANSLATE_NOOP("CMainWindow", "Box Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A box file with the same name already exists in this folder. "
                          "Please use a different name."),
        {},
        editBox};
    return kind;
}

const AddKind &addPlc()
{
    static const AddKind kind{
        [](QWidget *window, const QStandardItem *, const AddKind::Take &take) {
            PLCInputDialog dialog(window);
            if (dialog.exec() == QDialog::Accepted) {
                take({dialog.plcName(),
                      QStringLiteral(":/adsdemo/images/PLC-file.svg"),
                      {{plcManufacturerRole, dialog.manufacturer()}, {plcProtocolRole, dialog.protocol()}}});
            }
        },
        QT_TRANSLATE_NOOP("CMainWindow", "PLC Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A PLC file with the same name already exists in PLC or StandardDIO "
                          "folder. Please use a different name."),
        {0, 1},
        editPlc};
    return kind;
}

const AddKind &addStandard()
{
    static const AddKind kind{
        [](QWidget *window, const QStandardItem *, const AddKind::Take &take) {
            standardInputDialog dialog(window);
            if (dialog.exec() == QDialog::Accepted) {
                take({dialog.name(),
                      Protocols::standardIcon(dialog.protocol()),
                      {{standardProtocolRole, dialog.protocol()}}});
            }
        },
        QT_TRANSLATE_NOOP("CMainWindow", "standard Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A standard file with the same name already exists in PLC or Standard "
                          "folder. Please use a different name."),
        {0},
        editStandard};
    return kind;
}

const AddKind &addServer()
{
    static const AddKind kind{
        [](QWidget *window, const QStandardItem *folder, const AddKind::Take &take) {
            ServerInputDialog dialog(window);
            QStringList protocols;
            for (int row = 0; row < folder->rowCount(); ++row) {
                if (const QStandardItem *child = folder->child(row)) {
                    protocols.append(child->data(serverProtocolRole).toString());
                }
            }
            dialog.setExistingProtocols(protocols);
            if (dialog.exec() == QDialog::Accepted) {
                take({dialog.name(),
                      ServerProtocols::icon(dialog.protocol()),
                      {{serverDescriptionRole, dialog.description()},
                       {serverProtocolRole, dialog.protocol()},
                       {serverIpRole, dialog.ip()},
                       {serverPortRole, dialog.port()},
                       {serverDomainNameRole, dialog.domain()}}});
            }
        },
        QT_TRANSLATE_NOOP("CMainWindow", "Server Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A server file with the same name already exists in this folder. "
                          "Please use a different name."),
        {},
        editServer};
    return kind;
}

} // namespace ResourceKinds

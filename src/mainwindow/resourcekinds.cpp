#include "mainwindow/resourcekinds.h"

#include "boxes/boxeditdialog.h"
#include "boxes/boxinputdialog.h"
#include "definitions/protocols.h"
#include "definitions/serverprotocols.h"
#include "mainwindow/docking.h"
#include "model/itemroles.h"
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
#include <QPointer>
#include <QPushButton>
#include <QStandardItem>

#include <algorithm>

namespace {

class BoxForm : public RenamingFormOf<BoxEditDialog>
{
public:
    using RenamingFormOf::RenamingFormOf;

    // The session moves to the other Box along with the fields.
    void rebind(QWidget *open, QStandardItem *item) const override
    {
        const QPointer<BoxEditDialog> box(static_cast<BoxEditDialog *>(open));
        box->replaceItem(item);
        box->disconnectFromServer();
        if (box) { // who heard of the end may have closed the form
            box->connectToServer();
        }
    }
    void connectTab(QDialog *form, QStandardItem *item, ads::CDockWidget *tab, QWidget *window) const override
    {
        QObject::connect(tab, &QObject::destroyed, static_cast<BoxEditDialog *>(form),
                         &BoxEditDialog::disconnectFromServer);
        RenamingFormOf::connectTab(form, item, tab, window);
    }
};

template <typename Class> const FormClass *formClass(QLatin1String subKind = {})
{
    static const Class form{QString(subKind)};
    return &form;
}

void askForBox(QWidget *window, const QStandardItem *, const ResourceKind::Take &take)
{
    BoxInputDialog dialog(window);
    if (dialog.exec() == QDialog::Accepted) {
        take({dialog.name(),
              ProjectTree::boxIcon,
              {{boxIpRole, dialog.ip()}, {boxModelRole, dialog.model()}}});
    }
}

void askForPlc(QWidget *window, const QStandardItem *, const ResourceKind::Take &take)
{
    PLCInputDialog dialog(window);
    if (dialog.exec() == QDialog::Accepted) {
        take({dialog.plcName(),
              QStringLiteral(":/adsdemo/images/PLC-file.svg"),
              {{plcManufacturerRole, dialog.manufacturer()}, {plcProtocolRole, dialog.protocol()}}});
    }
}

void askForStandard(QWidget *window, const QStandardItem *, const ResourceKind::Take &take)
{
    standardInputDialog dialog(window);
    if (dialog.exec() == QDialog::Accepted) {
        take({dialog.name(),
              Protocols::standardIcon(dialog.protocol()),
              {{standardProtocolRole, dialog.protocol()}}});
    }
}

void askForServer(QWidget *window, const QStandardItem *folder, const ResourceKind::Take &take)
{
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
}

} // namespace

const ResourceKind &ResourceKind::box()
{
    static const ResourceKind kind{
        EditorTab::Box,
        noSubKind,
        {formClass<BoxForm>()},
        askForBox,
        QT_TRANSLATE_NOOP("CMainWindow", "Box Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A box file with the same name already exists in this folder. "
                          "Please use a different name.")};
    return kind;
}

const ResourceKind &ResourceKind::plc()
{
    static const ResourceKind kind{
        EditorTab::Plc,
        noSubKind,
        {formClass<FormOf<PLCEditDialog>>()},
        askForPlc,
        QT_TRANSLATE_NOOP("CMainWindow", "PLC Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A PLC file with the same name already exists in PLC or StandardDIO "
                          "folder. Please use a different name."),
        // Compat: these two, whatever folders the warning names.
        {ProjectTree::StandardRow, ProjectTree::ServiceRow}};
    return kind;
}

const ResourceKind &ResourceKind::standard()
{
    static const ResourceKind kind{
        EditorTab::Standard,
        standardProtocolRole,
        {formClass<RenamingFormOf<standardDLT645EditDialog>>(Protocols::dlt645),
         formClass<RenamingFormOf<standardModbusEditDialog>>(Protocols::modbus)},
        askForStandard,
        QT_TRANSLATE_NOOP("CMainWindow", "standard Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A standard file with the same name already exists in PLC or "
                          "Standard folder. Please use a different name."),
        {ProjectTree::StandardRow}};
    return kind;
}

const ResourceKind &ResourceKind::service()
{
    static const ResourceKind kind{EditorTab::Service,
                                   serviceProtocolRole,
                                   {formClass<FormOf<ServiceIEC61850EditDialog>>(Protocols::iec61850)}};
    return kind;
}

const ResourceKind &ResourceKind::server()
{
    static const ResourceKind kind{
        EditorTab::Server,
        serverProtocolRole,
        {formClass<FormOf<ServerEditDialog>>(Protocols::mqtt),
         formClass<FormOf<ServerAliMQTTEditDialog>>(Protocols::aliMqtt),
         formClass<FormOf<ServerOneNetMQTTEditDialog>>(Protocols::oneNetMqtt),
         formClass<FormOf<ServerHuaWeiMQTTEditDialog>>(Protocols::huaWeiMqtt),
         formClass<FormOf<ServerModbusTCPEditDialog>>(Protocols::modbusTcpSlave),
         formClass<FormOf<ServerHJ212EditDialog>>(Protocols::hj212),
         formClass<FormOf<ServerSL651EditDialog>>(Protocols::sl651),
         formClass<FormOf<ServerOPCUAEditDialog>>(Protocols::opcUaServer)},
        askForServer,
        QT_TRANSLATE_NOOP("CMainWindow", "Server Name cannot be empty."),
        QT_TRANSLATE_NOOP("CMainWindow",
                          "A server file with the same name already exists in this folder. "
                          "Please use a different name.")};
    return kind;
}

const FormClass *ResourceKind::formFor(const QStandardItem *item) const
{
    const QString subKind = subKindRole == noSubKind ? QString() : item->data(subKindRole).toString();
    for (const FormClass *form : forms) {
        if (form->subKind() == subKind) {
            return form;
        }
    }
    return nullptr;
}

bool ResourceKind::isNameTaken(QStandardItem *folder, const QString &name) const
{
    if (comparedFolders.isEmpty()) {
        return ProjectTree::childNamed(folder, name);
    }
    const QStandardItem *project = ProjectTree::projectOf(folder);
    return std::any_of(comparedFolders.begin(), comparedFolders.end(), [&](ProjectTree::FolderRow row) {
        return ProjectTree::childNamed(project->child(row), name);
    });
}

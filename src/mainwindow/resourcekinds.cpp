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

class BoxKind : public ResourceKind
{
public:
    BoxKind()
        : ResourceKind({EditorTab::Box,
                        noSubKind,
                        {formClass<BoxForm>()},
                        QT_TRANSLATE_NOOP("CMainWindow", "Box Name cannot be empty."),
                        QT_TRANSLATE_NOOP("CMainWindow",
                                          "A box file with the same name already exists in this folder. "
                                          "Please use a different name.")})
    {
    }

    void ask(QWidget *window, const QStandardItem *, const Take &take) const override
    {
        BoxInputDialog dialog(window);
        if (dialog.exec() == QDialog::Accepted) {
            take({dialog.name(),
                  ProjectTree::boxIcon,
                  {{boxIpRole, dialog.ip()}, {boxModelRole, dialog.model()}}});
        }
    }
};

class PlcKind : public ResourceKind
{
public:
    PlcKind()
        : ResourceKind(
            {EditorTab::Plc,
             noSubKind,
             {formClass<FormOf<PLCEditDialog>>()},
             QT_TRANSLATE_NOOP("CMainWindow", "PLC Name cannot be empty."),
             QT_TRANSLATE_NOOP("CMainWindow",
                               "A PLC file with the same name already exists in PLC or StandardDIO "
                               "folder. Please use a different name."),
             // Compat: these two, whatever folders the warning names.
             {ProjectTree::StandardRow, ProjectTree::ServiceRow}})
    {
    }

    void ask(QWidget *window, const QStandardItem *, const Take &take) const override
    {
        PLCInputDialog dialog(window);
        if (dialog.exec() == QDialog::Accepted) {
            take({dialog.plcName(),
                  QStringLiteral(":/adsdemo/images/PLC-file.svg"),
                  {{plcManufacturerRole, dialog.manufacturer()}, {plcProtocolRole, dialog.protocol()}}});
        }
    }
};

class StandardKind : public ResourceKind
{
public:
    StandardKind()
        : ResourceKind({EditorTab::Standard,
                        standardProtocolRole,
                        {formClass<RenamingFormOf<standardDLT645EditDialog>>(Protocols::dlt645),
                         formClass<RenamingFormOf<standardModbusEditDialog>>(Protocols::modbus)},
                        QT_TRANSLATE_NOOP("CMainWindow", "standard Name cannot be empty."),
                        QT_TRANSLATE_NOOP("CMainWindow",
                                          "A standard file with the same name already exists in PLC or "
                                          "Standard folder. Please use a different name."),
                        {ProjectTree::StandardRow}})
    {
    }

    void ask(QWidget *window, const QStandardItem *, const Take &take) const override
    {
        standardInputDialog dialog(window);
        if (dialog.exec() == QDialog::Accepted) {
            take({dialog.name(),
                  Protocols::standardIcon(dialog.protocol()),
                  {{standardProtocolRole, dialog.protocol()}}});
        }
    }
};

class ServiceKind : public ResourceKind
{
public:
    ServiceKind()
        : ResourceKind({EditorTab::Service,
                        serviceProtocolRole,
                        {formClass<FormOf<ServiceIEC61850EditDialog>>(Protocols::iec61850)}})
    {
    }
};

class ServerKind : public ResourceKind
{
public:
    ServerKind()
        : ResourceKind({EditorTab::Server,
                        serverProtocolRole,
                        {formClass<FormOf<ServerEditDialog>>(Protocols::mqtt),
                         formClass<FormOf<ServerAliMQTTEditDialog>>(Protocols::aliMqtt),
                         formClass<FormOf<ServerOneNetMQTTEditDialog>>(Protocols::oneNetMqtt),
                         formClass<FormOf<ServerHuaWeiMQTTEditDialog>>(Protocols::huaWeiMqtt),
                         formClass<FormOf<ServerModbusTCPEditDialog>>(Protocols::modbusTcpSlave),
                         formClass<FormOf<ServerHJ212EditDialog>>(Protocols::hj212),
                         formClass<FormOf<ServerSL651EditDialog>>(Protocols::sl651),
                         formClass<FormOf<ServerOPCUAEditDialog>>(Protocols::opcUaServer)},
                        QT_TRANSLATE_NOOP("CMainWindow", "Server Name cannot be empty."),
                        QT_TRANSLATE_NOOP("CMainWindow",
                                          "A server file with the same name already exists in this folder. "
                                          "Please use a different name.")})
    {
    }

    void ask(QWidget *window, const QStandardItem *folder, const Take &take) const override
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
};

} // namespace

ResourceKind::ResourceKind(const Description &description)
    : m_description(description)
{
}

ResourceKind::~ResourceKind() = default;

const ResourceKind &ResourceKind::box()
{
    static const BoxKind kind;
    return kind;
}

const ResourceKind &ResourceKind::plc()
{
    static const PlcKind kind;
    return kind;
}

const ResourceKind &ResourceKind::standard()
{
    static const StandardKind kind;
    return kind;
}

const ResourceKind &ResourceKind::service()
{
    static const ServiceKind kind;
    return kind;
}

const ResourceKind &ResourceKind::server()
{
    static const ServerKind kind;
    return kind;
}

void ResourceKind::ask(QWidget *, const QStandardItem *, const Take &) const {}

const FormClass *ResourceKind::formFor(const QStandardItem *item) const
{
    const int role = m_description.subKindRole;
    const QString subKind = role == noSubKind ? QString() : item->data(role).toString();
    for (const FormClass *form : m_description.forms) {
        if (form->subKind() == subKind) {
            return form;
        }
    }
    return nullptr;
}

bool ResourceKind::isNameTaken(QStandardItem *folder, const QString &name) const
{
    const QVector<ProjectTree::FolderRow> &rows = m_description.comparedFolders;
    if (rows.isEmpty()) {
        return ProjectTree::childNamed(folder, name);
    }
    const QStandardItem *project = ProjectTree::projectOf(folder);
    return std::any_of(rows.begin(), rows.end(), [&](ProjectTree::FolderRow row) {
        return ProjectTree::childNamed(project->child(row), name);
    });
}

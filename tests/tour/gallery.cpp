#include "gallery.h"
#include "trendexhibit.h"

#include "boxes/boxeditdialog.h"
#include "boxes/boxinputdialog.h"
#include "boxes/boxsearchdialog.h"
#include "boxes/hostaddressdialog.h"
#include "boxes/pushoutcome.h"
#include "boxes/remarksdialog.h"
#include "mainwindow/cmainwindow.h"
#include "mainwindow/cstatusdialog.h"
#include "mainwindow/logowindow.h"
#include "model/itemroles.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"
#include "plc/plceditdialog.h"
#include "plc/plcinputdialog.h"
#include "projects/editprojectdialog.h"
#include "projects/newprojectdialog.h"
#include "recordinggallery.h"
#include "servers/importdatadialog.h"
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
#include "standards/standardcustompolleditdialog.h"
#include "standards/standarddioeditdialog.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardinputdialog.h"
#include "standards/standardmodbuseditdialog.h"
#include "standards/standardopcuaeditdialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QJsonArray>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeView>

using Place = Exhibit::Place;

QStandardItem *GalleryStock::item(const char *name, const Roles &roles)
{
    auto *made = new QStandardItem(QString::fromUtf8(name));
    for (const auto &role : roles) {
        made->setData(role.second, role.first);
    }
    auto *folder = new QStandardItem(ProjectTree::standardFolder);
    auto *project = new QStandardItem("Riverside substation");
    folder->appendRow(made);
    project->appendRow(folder);
    m_model.appendRow(project);
    return made;
}

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// Rows from texts with bars between the cells.
RowList rows(std::initializer_list<const char *> lines)
{
    RowList list;
    for (const char *line : lines) {
        QVariantList cells;
        const QStringList texts = QString::fromUtf8(line).split(QLatin1Char('|'));
        for (const QString &cell : texts) {
            cells.append(cell);
        }
        list.append(cells);
    }
    return list;
}

void type(const QWidget *form, const char *field, const char *value)
{
    form->findChild<QLineEdit *>(QLatin1String(field))->setText(QString::fromUtf8(value));
}

template <class Dialog> QWidget *plain(GalleryStock &)
{
    return new Dialog;
}

// --- Projects and Boxes ---

QWidget *newProject(GalleryStock &)
{
    auto *dialog = new NewProjectDialog;
    type(dialog, "name", "North feeder");
    type(dialog, "path", "/home/engineer/projects");
    return dialog;
}

QWidget *editProject(GalleryStock &)
{
    return new EditProjectDialog(text("North feeder"), text("/home/engineer/projects"),
                                 text("One feeder and its meter."));
}

QWidget *boxInput(GalleryStock &)
{
    auto *dialog = new BoxInputDialog;
    type(dialog, "name", "Gateway");
    type(dialog, "ip", "192.168.100.100");
    return dialog;
}

// Nothing listens at the address, which no other test has.
std::function<QWidget *(GalleryStock &)> box(int page)
{
    return [page](GalleryStock &stock) -> QWidget * {
        const QString ip = text("192.168.100.200");
        auto *form = new BoxEditDialog(stock.item("Gateway",
                                                  {{boxIpRole, text("127.0.22.1")},
                                                   {boxLanIpRole, ip},
                                                   {boxLanMaskRole, text("255.255.255.0")},
                                                   {boxLanGatewayRole, ip},
                                                   {boxWanIpRole, ip},
                                                   {boxNtpServerRole, ip},
                                                   {boxTimeRole, text("2026-11-21 12:00:00")}}),
                                       &stock.workspace);
        form->findChild<QTabWidget *>()->setCurrentIndex(page);
        return form;
    };
}

QWidget *boxSearch(GalleryStock &)
{
    auto *dialog = new BoxSearchDialog;
    dialog->findChild<QListWidget *>()->addItems(
        {text("192.168.100.200\n255.255.255.0"), text("192.168.100.201\n255.255.255.0")});
    return dialog;
}

// A form that has pushed, once in vain.
QWidget *pushed(GalleryStock &stock)
{
    auto *form = qobject_cast<BoxEditDialog *>(box(0)(stock));
    const auto show = [form](const char *line, const char *what, TransferEnding ending) {
        const PushOutcome::Push push{text(what), text("192.168.100.200")};
        auto *outcome = form->findChild<PushOutcome *>(text(line));
        outcome->end(outcome->begin(push), push, ending);
    };
    show("projectOutcome", "North feeder", TransferEnding::NoVerdict);
    show("programOutcome", "gate.bin", TransferEnding::Delivered);
    return form;
}

QWidget *remarks(GalleryStock &)
{
    const auto standard = [](const char *protocol, const char *port, const char *baudRate) {
        return QJsonObject{{text("name"), text("Tariff meter")},
                           {text("protocol"), text(protocol)},
                           {text("parameter"),
                            QJsonObject{{text("serialport"), text(port)},
                                        {text("baudRate"), text(baudRate)},
                                        {text("dataBit"), text("8")},
                                        {text("stopBit"), text("1")}}}};
    };
    const QJsonObject project{
        {text("name"), text("North feeder")},
        {text("standards"),
         QJsonArray{standard("DLT645", "COM1", "2400"), standard("DLT645", "COM1", "9600")}},
        {text("boxs"), QJsonArray{QJsonObject{{text("name"), text("Gateway")}}}}};
    auto *dialog = new RemarksDialog(nullptr);
    dialog->setRemarks(text("North feeder"), ProjectCheck::remarksOn(project, QDateTime::currentDateTime()));
    return dialog;
}

QWidget *hostAddress(GalleryStock &)
{
    return new HostAddressDialog(text("0.0.0.0"), nullptr);
}

// --- Standards ---

std::function<QWidget *(GalleryStock &)> modbus(const char *mode)
{
    return [mode](GalleryStock &stock) -> QWidget * {
        auto *form = new standardModbusEditDialog(
            stock.item("Protection relay",
                       {{standardProtocolRole, text("Modbus")}, {standardModbusModeRole, text(mode)}}),
            &stock.workspace);
        form->addTab();
        form->loadTab(text("Modbus-1"),
                      rows({"standard|1|ABCD|true|false", "0|Voltage A|float|1|r", "2|Voltage B|float|1|rw",
                            "100|Relay name|string|16|r"}));
        form->addTab();
        form->addParameter();
        return form;
    };
}

QWidget *dlt645(GalleryStock &stock)
{
    auto *form = new standardDLT645EditDialog(
        stock.item("Tariff meter", {{standardProtocolRole, text("DLT645")}}), &stock.workspace);
    form->addTab();
    auto *table = form->findChild<QTableWidget *>();
    table->item(0, 2)->setText(text("meter 1 energy"));
    return form;
}

QWidget *customPoll(GalleryStock &stock)
{
    auto *form = new standardCustomPollEditDialog(
        stock.item(
            "Weather station",
            {{standardProtocolRole, text("CustomPoll")},
             {standardDatasRole, QVariant::fromValue(rows({"wind|true|01 03 00 00 00 02|true|r|Timed"}))}}),
        &stock.workspace);
    form->addParameter();
    return form;
}

QWidget *dio(GalleryStock &stock)
{
    auto *form = new standardDIOEditDialog(
        stock.item("Yard",
                   {{standardProtocolRole, text("DIDO")},
                    {standardDatasRole, QVariant::fromValue(rows({"DI1|Gate open|r|Timed"}))}}),
        &stock.workspace);
    form->addParameter();
    return form;
}

QWidget *opcUa(GalleryStock &stock)
{
    auto *form = new standardOPCUAEditDialog(
        stock.item(
            "Press line",
            {{standardProtocolRole, text("OpcUA")},
             {standardUrlRole, text("opc.tcp://192.168.100.200:4840")},
             {standardDatasRole,
              QVariant::fromValue(rows({"Force|force|2|String Node|r|Change amplitude|0.5|||float"}))}}),
        &stock.workspace);
    form->findChild<QComboBox *>(text("authentication"))->setCurrentIndex(1);
    form->addParameter();
    return form;
}

// --- Service ---

std::function<QWidget *(GalleryStock &)> service(bool secured)
{
    return [secured](GalleryStock &stock) -> QWidget * {
        return new ServiceIEC61850EditDialog(
            stock.item("IEC61850",
                       {{serviceEnableSslRole, secured},
                        {serviceIsVerifyClientCertRole, secured},
                        {serviceAuthenticationRole, text("Password")},
                        {serviceRootCertificatePathRole, text("/home/engineer/certificates/root.pem")}}),
            &stock.workspace);
    };
}

// --- PLCs ---

std::function<QWidget *(GalleryStock &)> plc(const char *manufacturer, const char *protocol)
{
    return [manufacturer, protocol](GalleryStock &stock) -> QWidget * {
        auto *form = new PLCEditDialog(
            stock.item("Pump station",
                       {{plcManufacturerRole, QString::fromUtf8(manufacturer)},
                        {plcProtocolRole, text(protocol)},
                        {plcParametersRole,
                         QVariant::fromValue(rows({"DB1.0|level|float|1|r|Timed|||",
                                                   "DB1.4|flow|float|1|rw|Change amplitude|0.5|x*2|x/2"}))}}),
            &stock.workspace);
        form->addParameter();
        return form;
    };
}

// --- Servers ---

template <class Form>
std::function<QWidget *(GalleryStock &)> server(const char *protocol, const RowList &points = {})
{
    return [protocol, points](GalleryStock &stock) -> QWidget * {
        return new Form(stock.item("Control room",
                                   {{serverProtocolRole, text(protocol)},
                                    {serverIpRole, text("192.168.100.200")},
                                    {serverPortRole, text("1883")},
                                    {serverPayloadFormatRole, 2},
                                    {serverReportJsRole,
                                     text("// one point\nfunction report(v) {\n"
                                          "  return \"v=\" + v + 1;\n}")},
                                    {serverPointsRole, QVariant::fromValue(points)},
                                    {serverHoldingRegistersRole, QVariant::fromValue(points)}}),
                        &stock.workspace);
    };
}

std::function<QWidget *(GalleryStock &)> serverInput(int protocol)
{
    return [protocol](GalleryStock &) -> QWidget * {
        auto *dialog = new ServerInputDialog;
        type(dialog, "name", "Control room");
        QCoreApplication::processEvents(); // it opens with the first protocol
        dialog->findChild<QComboBox *>()->setCurrentIndex(protocol);
        return dialog;
    };
}

QWidget *importData(GalleryStock &)
{
    QStandardItemModel projects;
    auto *project = new QStandardItem(text("North feeder"));
    auto *folder = new QStandardItem(text("PLC"));
    folder->appendRow(new QStandardItem(text("Pump station")));
    project->appendRow(folder);
    projects.appendRow(project);
    auto *dialog = new ImportDataDialog;
    QList<QJsonObject> points;
    for (const char *name : {"level", "flow", "pressure"}) {
        points.append({{text("name"), text(name)},
                       {text("addr"), text("DB1.0")},
                       {text("dataType"), text("float")},
                       {text("length"), text("1")}});
    }
    dialog->addPoints(text("Pump station"), points);
    dialog->buildTree(projects, text("North feeder"));
    auto *tree = dialog->findChild<QTreeView *>();
    tree->expandAll();
    tree->setCurrentIndex(tree->model()->index(0, 0, tree->model()->index(0, 0, tree->model()->index(0, 0))));
    dialog->findChild<QTableView *>(text("points"))->selectRow(0);
    return dialog;
}

// --- The window ---

QVariantMap liveRow(const char *name, const char *value, const char *valid)
{
    return {{text("name"), text(name)},
            {text("addr"), text("40001")},
            {text("dataType"), text("float")},
            {text("value"), text(value)},
            {text("valid"), text(valid)}};
}

QWidget *monitoring(GalleryStock &)
{
    auto *page = new MonitoringPage;
    MonitoringTable::update(
        page->findChild<QTableWidget *>(),
        {liveRow("Voltage A", "230.1", "1"), liveRow("Voltage B", "0", "0"), liveRow("Current", "12.5", "1")},
        text("2026-11-21 12:00:00"));
    page->resize(760, 240);
    return page;
}

CMainWindow *makeWindow(GalleryStock &stock)
{
    auto *window = new CMainWindow;
    if (stock.english) {
        window->CESwitching();
    }
    window->resize(1600, 900);
    window->show();
    QCoreApplication::processEvents(); // a tab takes its share of a window that is laid out
    window->handleProjectCreated(text("North feeder"), text("/nowhere"), text("One feeder."));
    window->projectTree()->expandAll();
    Protocol::dataMonitoringData report;
    report.projectName = text("North feeder");
    report.plcName = text("Protection relay");
    report.time = text("2026-11-21 12:00:00");
    for (const auto &row : {liveRow("Voltage A", "230.1", "1"), liveRow("Voltage B", "0", "0")}) {
        report.datas.append(QJsonObject::fromVariantMap(row));
    }
    window->onDataReceived(report); // the first makes the node only
    window->onDataReceived(report);
    window->appendMessage(text("The Standard Modbus 'Protection relay' is saved successfully."));
    return window;
}

QWidget *mainWindow(GalleryStock &stock)
{
    CMainWindow *window = makeWindow(stock);
    const QStandardItem *project = window->projectModel()->item(0);
    window->projectTree()->setCurrentIndex(
        ProjectTree::childNamed(ProjectTree::childNamed(project, ProjectTree::serviceFolder), "IEC61850")
            ->index());
    window->slotServiceEditFile();
    return window;
}

QWidget *themedWindow(GalleryStock &stock)
{
    auto *window = qobject_cast<CMainWindow *>(mainWindow(stock));
    window->applyVsStyle();
    return window;
}

// The window of the docks that it tells about lives as long as the dialog.
QWidget *status(GalleryStock &stock)
{
    CMainWindow *window = makeWindow(stock);
    auto *dialog = new CStatusDialog(window->dockManager(), nullptr);
    QObject::connect(dialog, &QObject::destroyed, window, [window] { delete window; });
    return dialog;
}

QWidget *about(GalleryStock &)
{
    return new LogoWindow(nullptr);
}

} // namespace

QVector<Exhibit> galleryExhibits()
{
    return recordingExhibits()
        + QVector<Exhibit>{
            {"new-project", Place::Window, newProject},
            {"edit-project", Place::Tab, editProject},
            {"add-box", Place::Window, boxInput},
            {"box-commonly", Place::Tab, box(0)},
            {"box-pushed", Place::Tab, pushed},
            {"box-lan", Place::Tab, box(1)},
            {"box-wan", Place::Tab, box(2)},
            {"box-ntp", Place::Tab, box(3)},
            {"box-time", Place::Tab, box(4)},
            {"box-search", Place::Window, boxSearch},
            {"remarks", Place::Window, remarks},
            {"host-address", Place::Window, hostAddress},
            {"add-standard", Place::Window, plain<standardInputDialog>},
            {"modbus-tcp", Place::Tab, modbus("ModbusTCP")},
            {"modbus-rtu", Place::Tab, modbus("ModbusRTU")},
            {"dlt645", Place::Tab, dlt645},
            {"custompoll", Place::Tab, customPoll},
            {"dido", Place::Tab, dio},
            {"opcua", Place::Tab, opcUa},
            {"service", Place::Tab, service(false)},
            {"service-ssl", Place::Tab, service(true)},
            {"add-plc", Place::Window, plain<PLCInputDialog>},
            {"plc-s7", Place::Tab, plc("Siemens", "S7")},
            {"plc-mc3e", Place::Tab, plc("Mitsubishi", "MC-3E")},
            {"plc-hostlink", Place::Tab, plc("Omron", "HostLink")},
            {"plc-modbus", Place::Tab, plc("Modbus", "Modbus RTU")},
            {"add-server", Place::Window, serverInput(0)},
            {"add-slave-server", Place::Window, serverInput(4)},
            {"server-mqtt", Place::Tab, server<ServerEditDialog>("MQTT")},
            {"server-ali", Place::Tab, server<ServerAliMQTTEditDialog>("AliMQTT")},
            {"server-onenet", Place::Tab, server<ServerOneNetMQTTEditDialog>("OneNetMQTT")},
            {"server-huawei", Place::Tab, server<ServerHuaWeiMQTTEditDialog>("HuaWeiMQTT")},
            {"server-opcua", Place::Tab, server<ServerOPCUAEditDialog>("OpcUaServer")},
            {"server-modbus", Place::Tab,
             server<ServerModbusTCPEditDialog>(
                 "ModbusTCP(Slave)", rows({"Pump station|level|float|0|2", "Pump station|flow|float|2|2"}))},
            {"server-hj212", Place::Tab,
             server<ServerHJ212EditDialog>("HJ212",
                                           rows({"Pump station|level|w01018", "Pump station|flow|"}))},
            {"server-sl651", Place::Tab,
             server<ServerSL651EditDialog>("SL651", rows({"Pump station|level|39", "Pump station|flow|27"}))},
            {"import-data", Place::Window, importData},
            {"monitoring", Place::Window, monitoring},
            {"trend", Place::Window, [](GalleryStock &) { return TrendExhibit::full(); }},
            {"trend-empty", Place::Window, [](GalleryStock &) { return TrendExhibit::empty(); }},
            {"trend-points", Place::Window, [](GalleryStock &) { return TrendExhibit::points(); }},
            {"about", Place::Window, about},
            {"status", Place::Window, status},
            {"window", Place::Window, mainWindow},
            {"window-themed", Place::Window, themedWindow},
        };
}

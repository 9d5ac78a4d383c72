#include "../mainwindow/windowundertest.h"
#include "boxes/boxeditdialog.h"
#include "boxsim/boxsim.h"
#include "document/projectfile.h"
#include "document/projectreader.h"
#include "messages.h"
#include "processmemory.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

// Simulated work for as many seconds as the command line says (10 if it says nothing): projects are made,
// saved, loaded, pushed, watched and closed, sessions come and go, forms are re-bound. Ends with 1 if a step
// fails or if memory grows after the first quarter.

namespace {

using Window = WindowUnderTest;

constexpr qint64 allowedGrowth = 24 * 1024 * 1024; // bytes

[[noreturn]] void fail(const char *what)
{
    std::fprintf(stderr, "soak: %s\n", what);
    std::exit(1);
}

void require(bool holds, const char *what)
{
    if (!holds) {
        fail(what);
    }
}

template <typename Condition> void await(Condition condition, const char *what)
{
    require(QTest::qWaitFor(condition, 10000), what);
}

std::unique_ptr<BoxSim> startBox(const char *address)
{
    BoxSimOptions options;
    options.address = QHostAddress(QLatin1String(address));
    options.discovery = false;
    options.reportInterval = 0;
    auto box = std::make_unique<BoxSim>(options);
    require(box->start(), "the Box could not start");
    return box;
}

// One shift of an engineer in one window.
class Shift
{
public:
    Shift(BoxSim *first, BoxSim *second)
        : m_first(first)
        , m_second(second)
    {
    }

    void work()
    {
        m_project = m_window.addProject("plant", m_folder.path());
        Window::addStandard(m_project, "modbus", "Modbus");
        Window::addStandard(m_project, "meter", "DLT645");
        m_gate = Window::addBox(m_project, "a", m_first->options().address.toString());
        m_other = Window::addBox(m_project, "b", m_second->options().address.toString());
        openForms();
        for (int round = 0; round < 3; ++round) {
            session();
        }
        closeProject();
        const std::optional<QJsonObject> document = readProjectFile(m_folder.filePath("plant.json"));
        require(document.has_value(), "the project did not load");
        m_project = loadProject(*m_window.projectModel(), *document, m_folder.path());
        m_gate = Window::folder(m_project, ProjectTree::boxFolder)->child(0);
        m_other = Window::folder(m_project, ProjectTree::boxFolder)->child(1);
        openForms();
        session();
    }

private:
    void openForms()
    {
        const QStandardItem *standards = Window::folder(m_project, ProjectTree::standardFolder);
        for (const int row : {0, 1, 0}) { // each replaces the tab of the other kind
            m_window.click(standards->child(row));
        }
        Window::press(m_window.form("Edit Standard"), "saveButton");
        Window::settle();
        m_window.click(Window::folder(m_project, ProjectTree::serviceFolder)->child(0));
        Window::press(m_window.form("Edit Service"), "saveButton");
    }

    void session()
    {
        m_window.click(m_gate);
        await([this] { return m_first->sessionCount() == 1; }, "no session");
        auto *form = qobject_cast<BoxEditDialog *>(m_window.form("Edit Box"));
        m_messages.expect();
        form->readLanAllocation();
        await([this] { return m_messages.pending() == 0; }, "no answer");
        m_window.select(m_gate);
        m_first->stopProject();
        Window::press(form, "updateProjectButton");
        require(m_first->projectName() == "plant", "the project did not arrive");
        for (int report = 0; report < 20; ++report) {
            m_first->reportNow();
            QCoreApplication::processEvents();
        }
        m_window.click(m_other); // re-binds the form and moves the session
        await([this] { return m_second->sessionCount() == 1 && m_first->connectionCount() == 0; },
              "the session did not move");
        m_window.tab("Edit Box")->closeDockWidget();
        Window::settle();
        await([this] { return m_second->connectionCount() == 0; }, "the session did not end");
    }

    void closeProject()
    {
        m_messages.expect(); // where it was saved
        m_window.saveJsonFile(m_project);
        m_window.select(m_project);
        m_messages.expect(QMessageBox::No);
        m_window.slotDeleteProject();
        Window::settle();
        require(m_window.projectModel()->rowCount() == 0, "the project did not close");
    }

    BoxSim *m_first;
    BoxSim *m_second;
    QTemporaryDir m_folder;
    Window m_window;
    Messages m_messages;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_gate = nullptr;
    QStandardItem *m_other = nullptr;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type != QtDebugMsg && type != QtInfoMsg) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    const qint64 seconds = argc > 1 ? QByteArray(argv[1]).toLongLong() : 10;
    require(seconds > 0, "the seconds are to be a number");
    const std::unique_ptr<BoxSim> first = startBox("127.0.30.5");
    const std::unique_ptr<BoxSim> second = startBox("127.0.30.6");

    QElapsedTimer clock;
    clock.start();
    qint64 early = 0;
    int shifts = 0;
    while (shifts < 2 || clock.elapsed() < seconds * 1000) { // the memory of one says nothing
        Shift(first.get(), second.get()).work();
        ++shifts;
        if (early == 0 && clock.elapsed() > seconds * 250) {
            early = residentSize();
        }
    }
    const qint64 growth = residentSize() - early;
    std::printf("%d shifts in %lld s, %lld KiB more than after the first quarter (%lld KiB)\n", shifts,
                static_cast<long long>(clock.elapsed() / 1000), static_cast<long long>(growth / 1024),
                static_cast<long long>(early / 1024));
    require(growth < allowedGrowth, "memory grows");
    return 0;
}

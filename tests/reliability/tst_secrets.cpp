#include "../mainwindow/windowundertest.h"
#include "app/messagehandler.h"
#include "boxes/boxeditdialog.h"
#include "boxsim/boxsim.h"
#include "boxsim/wire.h"
#include "messages.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QTemporaryDir>

#include <unistd.h>

using Window = WindowUnderTest;

namespace {

const QString address = "127.0.30.4";

// What must stay out of sight: passwords, keys and certificates, wherever an item or a Box holds them.
const struct {
    const char *kind;
    int role;
} places[] = {
    {"Service", servicePasswordRole},
    {"Service", serviceServerKeyRole},
    {"Service", serviceServerKeyPasswordRole},
    {"Service", serviceRootCertificateRole},
    {"Service", serviceServerCertificateRole},
    {"Service", serviceClientCertificate1Role},
    {"Service", serviceClientCertificate2Role},
    {"Service", serviceClientCertificate3Role},
    {"Service", serviceClientCertificate4Role},
    {"Service", serviceClientCertificate5Role},
    {"Service", serviceClientCertificate6Role},
    {"Service", serviceClientCertificate7Role},
    {"Service", serviceClientCertificate8Role},
    {"Service", serviceClientCertificate9Role},
    {"Service", serviceClientCertificate10Role},
    {"Standard", standardPasswordRole},
    {"Standard", standardPrivateKeyRole},
    {"Standard", standardCertificateRole},
    {"Box", boxWifiPasswordRole},
};
const QString onTheBox = "secret-99-on-the-box";

QString secret(int number)
{
    return QString("secret-%1-").arg(number, 2, 10, QLatin1Char('0')) + "Tr0ub4dor";
}

// Both standard streams of this process, written into a file while it lives.
class CaughtStreams
{
public:
    explicit CaughtStreams(const QString &path)
        : m_file(path)
        , m_out(dup(STDOUT_FILENO))
        , m_error(dup(STDERR_FILENO))
    {
        m_opened = m_file.open(QIODevice::ReadWrite | QIODevice::Truncate);
        fflush(nullptr);
        dup2(m_file.handle(), STDOUT_FILENO);
        dup2(m_file.handle(), STDERR_FILENO);
    }
    ~CaughtStreams() { release(); }
    CaughtStreams(const CaughtStreams &) = delete;
    CaughtStreams &operator=(const CaughtStreams &) = delete;

    bool isOpen() const { return m_opened; }
    QByteArray release()
    {
        if (m_out >= 0) {
            fflush(nullptr);
            dup2(m_out, STDOUT_FILENO);
            dup2(m_error, STDERR_FILENO);
            close(m_out);
            close(m_error);
            m_out = m_error = -1;
        }
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QFile m_file;
    int m_out;
    int m_error;
    bool m_opened = false;
};

} // namespace

// Passwords and keys travel and rest in clear text, since the Box wants them so; nothing else shows them.
class TestSecrets : public QObject
{
    Q_OBJECT
private slots:
    void noSecretIsShownOrLogged();

private:
    void work(Window *window, BoxSim *sim, const QString &folder, QStringList *seen);
    static void collectTexts(QStringList *seen);
};

// Titles, tool tips and labels of all that is open.
void TestSecrets::collectTexts(QStringList *seen)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget *widget : widgets) {
        *seen << widget->windowTitle() << widget->toolTip() << widget->statusTip();
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            *seen << label->text();
        }
    }
}

// All that a user does with such items, with success and without.
void TestSecrets::work(Window *window, BoxSim *sim, const QString &folder, QStringList *seen)
{
    Messages messages;
    messages.allowOthers(); // of what fails
    QStandardItem *project = window->addProject("plant", folder);
    QStandardItem *service = Window::folder(project, ProjectTree::serviceFolder)->child(0);
    QStandardItem *standard = Window::addStandard(project, "opc", "OpcUA");
    QStandardItem *box = Window::addBox(project, "gate", address);
    int number = 0;
    for (const auto &place : places) {
        QStandardItem *item = qstrcmp(place.kind, "Service") == 0 ? service
            : qstrcmp(place.kind, "Box") == 0                     ? box
                                                                  : standard;
        item->setData(secret(number++), place.role);
    }
    service->setData("true", serviceEnableSslRole);
    service->setData("true", serviceIsVerifyClientCertRole);

    window->click(service);
    collectTexts(seen);
    Window::press(window->form("Edit Service"), "saveButton");
    window->click(box);
    QTRY_COMPARE(sim->sessionCount(), 1);
    auto *form = qobject_cast<BoxEditDialog *>(window->form("Edit Box"));
    messages.expect(); // of the write
    form->writeWifiAllocation();
    QTRY_COMPARE(messages.pending(), 0);
    sim->setSetting("password", onTheBox);
    messages.expect(); // of the read
    form->readWifiAllocation();
    QTRY_COMPARE(messages.pending(), 0);
    // Answers and reports that the program can make nothing of.
    sim->sendRaw(Wire::jsonAnswer({{"type", "77"}, {"password", onTheBox}}));
    sim->sendRaw(Wire::segments("{\"password\":\"" + onTheBox.toUtf8() + '"', 1024, -1, -1).first());
    messages.expect(); // of an answer behind them, which comes when they are taken in
    form->readNTPAllocation();
    QTRY_COMPARE(messages.pending(), 0);
    collectTexts(seen);

    window->select(box);
    Window::press(form, "updateProjectButton");
    messages.expect();
    window->saveJsonFile(project);
    project->setData("/nowhere/at/all", projectPathRole);
    window->saveJsonFile(project);
    Window::press(form, "updateProjectButton");
    collectTexts(seen);
    Window::press(form, "saveButton");
    *seen << messages.told() << window->messages();
}

void TestSecrets::noSecretIsShownOrLogged()
{
    const QString log = QCoreApplication::applicationDirPath() + "/MARLINLOG.log";
    QFile::remove(log);
    const QTemporaryDir folder;
    BoxSimOptions options;
    options.address = QHostAddress(address);
    options.discovery = false;
    BoxSim sim(options);
    QVERIFY2(sim.start(), qPrintable(sim.errorString()));
    QStringList seen;

    CaughtStreams streams(QDir::current().filePath("streams.txt"));
    QVERIFY(streams.isOpen());
    const QtMessageHandler before = qInstallMessageHandler(messageHandler);
    {
        Window window;
        work(&window, &sim, folder.path(), &seen);
    }
    qInstallMessageHandler(before);
    const QByteArray printed = streams.release();
    QFile logged(log);
    QVERIFY(logged.open(QIODevice::ReadOnly));
    const QByteArray lines = logged.readAll();

    // What was done has left its traces, so the silence below means something.
    QFile saved(folder.filePath("plant.json"));
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QVERIFY(saved.readAll().contains(secret(1).toUtf8())); // there, as the Box wants it
    QVERIFY(printed.contains("JSON data saved to file"));
    QVERIFY(lines.contains("ServiceIEC61850EditDialog: save"));
    QVERIFY(!seen.filter("saved successfully").isEmpty());
    const QStringList leaks = seen.filter("secret-");
    QCOMPARE(leaks, QStringList());
    QVERIFY2(!printed.contains("secret-"), printed.constData());
    QVERIFY2(!lines.contains("secret-"), lines.constData());
}

QTEST_MAIN(TestSecrets)
#include "tst_secrets.moc"

// Reads many Modbus devices as boxsim does, and prints what share of a core that takes and how well the beats
// are kept. Run by hand: acquire_load [devices] [registers] [seconds], by default 100 devices of 100
// registers for 20 s, each read once a second, first grouped, then each register alone.
#include "boxsim/acquire/acquisition.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <modbus.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr int port = 1502;
constexpr int interval = 1000; // milliseconds
const char address[] = "127.0.51.20";

// All devices, in a process of their own: answers whoever connects until it is ended.
int serve()
{
    modbus_t *context = modbus_new_tcp(address, port);
    modbus_mapping_t *registers = modbus_mapping_new(0, 0, 10000, 0);
    QVector<pollfd> polled = {{modbus_tcp_listen(context, 1000), POLLIN, 0}};
    if (!registers || polled.at(0).fd < 0) {
        return 1;
    }
    puts("ready");
    fflush(stdout);
    while (poll(polled.data(), static_cast<nfds_t>(polled.size()), -1) > 0) {
        for (int i = polled.size() - 1; i > 0; --i) {
            quint8 request[MODBUS_TCP_MAX_ADU_LENGTH];
            modbus_set_socket(context, polled.at(i).fd);
            const int size = polled.at(i).revents != 0 ? modbus_receive(context, request) : 0;
            if (size > 0) {
                modbus_reply(context, request, size, registers);
            } else if (size < 0) {
                ::close(polled.takeAt(i).fd);
            }
        }
        if (polled.at(0).revents != 0) {
            polled.append({accept(polled.at(0).fd, nullptr, nullptr), POLLIN, 0});
        }
    }
    return 1;
}

QVector<SimStandard> standards(int devices, int registers)
{
    QVector<SimStandard> standards;
    for (int i = 0; i < devices; ++i) {
        SimStandard standard;
        standard.name = QString::number(i);
        standard.protocol = QStringLiteral("Modbus");
        standard.mode = QStringLiteral("ModbusTCP");
        standard.parameters = {{QStringLiteral("ip"), QString::fromLatin1(address)},
                               {QStringLiteral("port"), QString::number(port)}};
        SimDevice device;
        device.settings = {{QStringLiteral("stationNum"), QStringLiteral("1")},
                           {QStringLiteral("startAddress0"), QStringLiteral("1")}};
        device.pointCount = registers;
        standard.devices = {device};
        for (int r = 0; r < registers; ++r) {
            standard.points.append({QString::number(r), QString::number(r), QStringLiteral("uint16"), 0});
        }
        standards.append(standard);
    }
    return standards;
}

double processorTime()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void measure(int devices, int registers, int seconds, bool grouping)
{
    Acquisition acquisition;
    QVector<int> beats(devices);
    QVector<double> late; // milliseconds behind the beat, when the reading is over; a skipped one makes those
                          // after it late
    int notValid = 0;
    QElapsedTimer clock;
    QObject::connect(&acquisition, &Acquisition::readingOver, &acquisition,
                     [&](int standard, const QVector<PointReading> &readings) {
                         const double now = static_cast<double>(clock.nsecsElapsed()) / 1e6;
                         late.append(now - beats[standard]++ * interval);
                         notValid +=
                             static_cast<int>(std::count_if(readings.cbegin(), readings.cend(),
                                                            [](const PointReading &r) { return !r.valid; }));
                     });
    const double before = processorTime();
    clock.start();
    acquisition.start(standards(devices, registers), {true, {}, grouping}, interval);
    QTimer::singleShot(1000 * seconds - interval / 2, Qt::PreciseTimer, &acquisition,
                       &QCoreApplication::quit);
    QCoreApplication::exec();
    const double used = processorTime() - before;
    const double wall = static_cast<double>(clock.elapsed()) / 1000;
    acquisition.stop();
    std::sort(late.begin(), late.end());
    const auto at = [&](double share) { return late.value(static_cast<int>(share * (late.size() - 1))); };
    printf("%s: %d devices of %d registers each %d ms: %.1f %% of a core; %d readings of %d, %d values not "
           "valid; "
           "over after %.1f ms (median), %.1f ms (99 of 100), %.1f ms (most)\n",
           grouping ? "grouped" : "single", devices, registers, interval, 100 * used / wall, late.size(),
           devices * seconds, notValid, at(0.5), at(0.99), at(1));
    fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("serve")) {
        return serve();
    }
    const auto number = [&](int at, int usual) {
        return qMax(1, arguments.value(at, QString::number(usual)).toInt());
    };
    QProcess devices;
    devices.start(QCoreApplication::applicationFilePath(), {QStringLiteral("serve")});
    if (!devices.waitForReadyRead()) {
        fputs("the devices do not start\n", stderr);
        return 1;
    }
    for (const bool grouping : {true, false}) {
        measure(number(1, 100), number(2, 100), number(3, 20), grouping);
    }
    devices.kill();
    devices.waitForFinished();
    return 0;
}

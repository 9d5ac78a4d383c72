#include "boxctl/boxlist.h"
#include "boxctl/call.h"
#include "boxctl/interruption.h"
#include "boxctl/output.h"
#include "boxlink/boxsearch.h"

#include <QEventLoop>
#include <QJsonObject>
#include <QNetworkInterface>
#include <QSet>
#include <QTimer>

namespace {

constexpr int mostSeconds = 3600;
constexpr int broadcastInterval = 1000; // ms

// The first IPv4 address of each interface that is up and no loopback.
QList<QHostAddress> localAddresses()
{
    QList<QHostAddress> addresses;
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &each : interfaces) {
        const bool isUp = each.flags() & QNetworkInterface::IsUp;
        const QList<QNetworkAddressEntry> entries = each.addressEntries();
        for (const QNetworkAddressEntry &entry : entries) {
            if (isUp && !entry.ip().isLoopback() && entry.ip().protocol() == QAbstractSocket::IPv4Protocol) {
                addresses.append(entry.ip());
                break;
            }
        }
    }
    return addresses;
}

// Searches from several local addresses at once and prints each Box once.
class Search
{
public:
    explicit Search(bool json)
        : m_json(json)
    {
    }

    // Gives the exit status.
    int run(const QList<QHostAddress> &addresses, int seconds)
    {
        Interruption::prepare();
        for (const QHostAddress &address : addresses) {
            auto *search = new BoxSearch(address, &m_context);
            QObject::connect(search, &BoxSearch::found, &m_context,
                             [this](const Discovery::Answer &box) { tell(box); });
            QObject::connect(
                search, &BoxSearch::failed, &m_context,
                [this](const QHostAddress &from, const QString &error) { tellFailure(from, error); });
            QObject::connect(&m_broadcasts, &QTimer::timeout, search, &BoxSearch::broadcast);
            search->broadcast();
        }
        m_broadcasts.start(broadcastInterval);
        QEventLoop loop;
        QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &loop, [&loop] {
            if (Interruption::isAsked()) {
                loop.quit();
            }
        });
        look.start(Interruption::pause);
        loop.exec();
        if (Interruption::isAsked()) {
            Output::error(QStringLiteral("the search was interrupted; there may be more Boxes"));
        }
        return m_boxes.isEmpty() || Interruption::isAsked() ? SomeFailed : AllDone;
    }

private:
    void tell(const Discovery::Answer &box)
    {
        if (m_boxes.contains(box.ip)) {
            return;
        }
        m_boxes.insert(box.ip);
        if (m_json) {
            Output::json({{QStringLiteral("box"), box.ip},
                          {QStringLiteral("ok"), true},
                          {QStringLiteral("mask"), box.mask},
                          {QStringLiteral("model"), box.model}});
        } else {
            Output::line(QStringLiteral("%1: mask %2, model %3").arg(box.ip, box.mask, box.model));
        }
    }

    void tellFailure(const QHostAddress &address, const QString &error)
    {
        if (!m_failed.contains(address.toString())) {
            m_failed.insert(address.toString());
            Output::error(QStringLiteral("no search from %1, UDP port 5: %2").arg(address.toString(), error));
        }
    }

    QObject m_context;   // owns the searches
    QTimer m_broadcasts; // for as long as the call wants, where a search of its own ends after ten seconds
    bool m_json;
    QSet<QString> m_boxes;
    QSet<QString> m_failed;
};

int run(const Call &call)
{
    if (!call.arguments().isEmpty()) {
        return call.wrong(QStringLiteral("it takes no arguments"));
    }
    const std::optional<int> seconds = call.number("seconds", 1, mostSeconds);
    if (!seconds) {
        return call.wrong(QStringLiteral("--seconds takes a number from 1 to %1").arg(mostSeconds));
    }
    if (call.isSet("bind") && !BoxTarget::isAddress(call.value("bind"))) {
        return call.wrong(QStringLiteral("--bind takes an IPv4 address"));
    }
    const QList<QHostAddress> addresses = call.isSet("bind")
        ? QList<QHostAddress>{QHostAddress(BoxTarget::addressOf(call.value("bind")))}
        : localAddresses();
    if (addresses.isEmpty()) {
        Output::error(QStringLiteral("no network interface with an IPv4 address is up"));
        return SomeFailed;
    }
    return Search(call.isSet("json")).run(addresses, *seconds);
}

} // namespace

Command searchCommand()
{
    return {
        "search",
        "",
        "Find the Boxes of the local network by broadcasts.",
        "One broadcast a second goes from UDP port 5 of each network interface, and each\n"
        "Box that answers is printed once. Binding a port below 1024 needs the capability\n"
        "CAP_NET_BIND_SERVICE, or a system whose net.ipv4.ip_unprivileged_port_start is 5\n"
        "or less. Ends with 1 if no Box is found.",
        {{"bind", "Search from this local address alone.", "address"},
         {"seconds", "Search so long. Default: 3.", "number", "3"},
         {"json", "Print one JSON object a Box and line; beside box and ok its keys are mask and model."}},
        run};
}

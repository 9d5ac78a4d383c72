#include "document/servicecheck.h"

#include "definitions/documentkeys.h"
#include "definitions/protocols.h"
#include "document/certificatecheck.h"
#include "document/checkedobject.h"
#include "document/checktext.h"
#include "model/itemroles.h"

#include <QDateTime>

#include <algorithm>

using namespace Definitions;

namespace {

using Severity = ProjectCheck::Severity;
using Certificates = QList<QSslCertificate>;

constexpr int clients = 10;
constexpr auto extended = Place::ExtendedParameters;

QString dayOf(const QDateTime &time)
{
    return time.toLocalTime().date().toString(Qt::ISODate);
}

// A chain is as good as its worst certificate.
void checkDates(CheckedObject *service, Severity severity, const QString &label,
                const Certificates &certificates, const QDateTime &now)
{
    for (const QSslCertificate &certificate : certificates) {
        if (certificate.expiryDate() < now) {
            service->add(severity,
                         CheckText::tr("%1 expired on %2.").arg(label, dayOf(certificate.expiryDate())));
            return;
        }
        if (certificate.effectiveDate() > now) {
            service->add(
                severity,
                CheckText::tr("%1 is not valid before %2.").arg(label, dayOf(certificate.effectiveDate())));
            return;
        }
    }
}

// What the content holds; nothing where it can't be judged.
Certificates checkCertificate(CheckedObject *service, Severity severity, const QString &label,
                              const QString &content, const QDateTime &now)
{
    if (content.isEmpty() || !CertificateCheck::isPossible()) {
        return {};
    }
    const Certificates certificates = CertificateCheck::certificatesIn(content);
    if (certificates.isEmpty()) {
        service->add(severity, CheckText::tr("%1 cannot be read.").arg(label));
    }
    checkDates(service, severity, label, certificates, now);
    return certificates;
}

void tellMissing(CheckedObject *service, Severity severity, const QString &label)
{
    service->add(severity, CheckText::tr("SSL is on, and %1 is missing.").arg(label));
}

void checkKey(CheckedObject *service, const Certificates &certificates)
{
    const QString key = service->text("serverKey", extended);
    if (key.isEmpty()) {
        tellMissing(service, Severity::Error, CheckText::tr("the server key"));
    } else if (!certificates.isEmpty()) {
        switch (
            CertificateCheck::fit(certificates.first(), key, service->text("serverKeyPassword", extended))) {
        case CertificateCheck::Fit::Different:
            service->error(CheckText::tr("The server key does not fit the server certificate."));
            break;
        case CertificateCheck::Fit::Unreadable:
            service->error(
                CheckText::tr("The server key cannot be read; perhaps its password is another one."));
            break;
        case CertificateCheck::Fit::Fits:
        case CertificateCheck::Fit::Unknown:
            break;
        }
    }
}

// A client's certificate matters to this client alone.
void checkClients(CheckedObject *service, const QDateTime &now)
{
    bool any = false;
    for (int client = 1; client <= clients; ++client) {
        const QByteArray number = QByteArray::number(client);
        const QString content = service->text(("clientCertificate" + number).constData(), extended);
        const QString path = service->text(("clientCertificatePath" + number).constData(), extended);
        const QString label = CheckText::tr("the client certificate %1").arg(client);
        any = any || !content.isEmpty();
        if (content.isEmpty() && !path.isEmpty()) {
            tellMissing(service, Severity::Warning, label);
        }
        checkCertificate(service, Severity::Warning, CheckText::tr("The client certificate %1").arg(client),
                         content, now);
    }
    if (!any) {
        service->warning(CheckText::tr("Clients have to show a certificate, and none is given."));
    }
}

void checkSsl(CheckedObject *service, const QDateTime &now)
{
    const bool verifies = service->text("isVerifyClientCert") == QLatin1String("true");
    const QString root = service->text("rootCertificate", extended);
    const QString server = service->text("serverCertificate", extended);
    if (root.isEmpty()) {
        tellMissing(service, verifies ? Severity::Error : Severity::Warning,
                    CheckText::tr("the root certificate"));
    }
    checkCertificate(service, Severity::Error, CheckText::tr("The root certificate"), root, now);
    if (server.isEmpty()) {
        tellMissing(service, Severity::Error, CheckText::tr("the server certificate"));
    }
    checkKey(
        service,
        checkCertificate(service, Severity::Error, CheckText::tr("The server certificate"), server, now));
    if (verifies) {
        checkClients(service, now);
    }
}

// As it comes with a new project, whose form was never opened.
bool isUntouched(const CheckedObject &service)
{
    const QVector<Value> &rows = values(Kind::Service);
    return std::all_of(rows.begin(), rows.end(), [&service](const Value &row) {
        return row.role == serviceProtocolRole || service.text(row.key, row.place).isEmpty();
    });
}

} // namespace

void ServiceCheck::check(CheckedObject *service, const QDateTime &now)
{
    service->needText(Severity::Error, "name");
    const QString protocol = service->text("protocol");
    if (protocol != Protocols::iec61850) {
        const QString label = CheckText::labelOf(DocumentKeys::protocolKey);
        service->error(protocol.isEmpty() ? CheckText::empty(label) : CheckText::notInList(label, protocol));
        return;
    }
    if (!isUntouched(*service)) {
        service->needText(Severity::Warning, "port");
    }
    service->checkValues(Severity::Error, Kind::Service, anySubKind, false);
    const QString login = service->text("authentication", extended);
    if (!login.isEmpty() && login != QLatin1String("0") && login != QLatin1String("1")) {
        service->error(CheckText::notInList(CheckText::labelOf(QLatin1String("authentication")), login));
    }
    if (service->text("enableSSL") == QLatin1String("true")) {
        checkSsl(service, now);
    } else if (login == QLatin1String("1") && service->text("password", extended).isEmpty()) {
        service->error(CheckText::tr("Clients have to give a password, and it is empty."));
    }
}

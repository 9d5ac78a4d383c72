#include "document/certificatesummary.h"

#include "document/certificatecheck.h"

#include <QDateTime>

CertificateSummary summaryOf(const QString &content)
{
    CertificateSummary summary;
    if (content.isEmpty()) {
        return summary;
    }
    summary.kind = CertificateSummary::Unknown;
    summary.size = CertificateCheck::bytesIn(content).size();
    if (!CertificateCheck::isPossible()) {
        return summary;
    }
    const QList<QSslCertificate> certificates = CertificateCheck::certificatesIn(content);
    if (!certificates.isEmpty()) {
        summary.kind = CertificateSummary::Certificate;
        summary.subject = certificates.first().subjectDisplayName();
        summary.validUntil = certificates.first().expiryDate().toLocalTime().date();
    } else if (const int bits = CertificateCheck::keyBits(content)) {
        summary.kind = CertificateSummary::Key;
        summary.keyBits = bits;
    }
    return summary;
}

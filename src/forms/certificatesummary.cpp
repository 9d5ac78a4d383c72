#include "forms/certificatesummary.h"

#include <QDateTime>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>

namespace {

int bitsOf(const QByteArray &bytes, QSsl::EncodingFormat format)
{
    for (const QSsl::KeyAlgorithm algorithm : {QSsl::Rsa, QSsl::Ec, QSsl::Dsa}) {
        const QSslKey key(bytes, algorithm, format);
        if (!key.isNull()) {
            return key.length();
        }
    }
    return 0;
}

} // namespace

CertificateSummary summaryOf(const QString &content)
{
    CertificateSummary summary;
    if (content.isEmpty()) {
        return summary;
    }
    const QByteArray text = content.toUtf8();
    const auto der = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    const QByteArray bytes = der ? *der : text;
    const QSsl::EncodingFormat format = der ? QSsl::Der : QSsl::Pem;
    summary.kind = CertificateSummary::Unknown;
    summary.size = bytes.size();
    if (!QSslSocket::supportsSsl()) {
        return summary;
    }
    const QSslCertificate certificate(bytes, format);
    if (!certificate.isNull()) {
        summary.kind = CertificateSummary::Certificate;
        summary.subject = certificate.subjectDisplayName();
        summary.validUntil = certificate.expiryDate().toLocalTime().date();
    } else if (const int bits = bitsOf(bytes, format)) {
        summary.kind = CertificateSummary::Key;
        summary.keyBits = bits;
    }
    return summary;
}

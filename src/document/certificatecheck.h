#pragma once

#include <QList>
#include <QSslCertificate>
#include <QString>

// Judges certificates and keys as the project carries them, see certificatefile.h.
namespace CertificateCheck {

// Whether Qt has an SSL library; without one nothing can be read, and nothing should be said.
bool isPossible();

// The certificates of a content; none if it can't be read.
QList<QSslCertificate> certificatesIn(const QString &content);

enum class Fit {
    Fits,
    Different,  // it is the key of another certificate
    Unreadable, // no key, or another password
    Unknown,    // a kind of key that Qt does not know, or one that does not tell its public part
};
// Whether it is the private key of the certificate.
Fit fit(const QSslCertificate &certificate, const QString &key, const QString &password);

} // namespace CertificateCheck

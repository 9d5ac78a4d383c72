#pragma once

#include <QList>
#include <QSslCertificate>
#include <QString>

// Reads and judges certificates and keys as the project carries them, see certificatefile.h: a content is
// PEM, or the Base64 of DER.
namespace CertificateCheck {

// Whether Qt has an SSL library; without one no certificate and no key can be read, and nothing should be
// said about them.
bool isPossible();

// The bytes of the file that the content was read from, but for white space around PEM.
QByteArray bytesIn(const QString &content);

// The certificates in a content; none if it can't be read.
QList<QSslCertificate> certificatesIn(const QString &content);

// The length of the private key in a content, in bits; 0 if there is none that can be read without a
// password.
int keyBits(const QString &content);

enum class Fit {
    Fits,
    Different,  // it is the key of another certificate
    Unreadable, // no key, or another password
    Unknown,    // a kind of key that Qt does not know, or one that does not tell its public part
};
// Whether it is the private key of the certificate.
Fit fit(const QSslCertificate &certificate, const QString &key, const QString &password);

} // namespace CertificateCheck

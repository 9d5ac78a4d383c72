#include "document/certificatecheck.h"

#include <QSslKey>
#include <QSslSocket>

namespace {

bool isPem(const QString &content)
{
    return content.contains(QLatin1String("-----BEGIN "));
}

QByteArray bytesOf(const QString &content)
{
    return isPem(content) ? content.toUtf8() : QByteArray::fromBase64(content.toLatin1());
}

// Qt takes a key in PEM under each of the titles, in DER under one only.
QList<QByteArray> pemForms(const QString &key)
{
    if (isPem(key)) {
        return {key.toUtf8()};
    }
    QList<QByteArray> forms;
    for (const char *title : {"PRIVATE KEY", "ENCRYPTED PRIVATE KEY", "RSA PRIVATE KEY", "EC PRIVATE KEY"}) {
        constexpr int lineLength = 64;
        QByteArray pem = QByteArray("-----BEGIN ") + title + "-----\n";
        const QByteArray text = bytesOf(key).toBase64();
        for (int at = 0; at < text.size(); at += lineLength) {
            pem += text.mid(at, lineLength) + '\n';
        }
        forms.append(pem + "-----END " + title + "-----\n");
    }
    return forms;
}

QSslKey privateKey(const QString &content, QSsl::KeyAlgorithm algorithm, const QString &password)
{
    const QList<QByteArray> forms = pemForms(content);
    for (const QByteArray &pem : forms) {
        const QSslKey key(pem, algorithm, QSsl::Pem, QSsl::PrivateKey, password.toUtf8());
        if (!key.isNull()) {
            return key;
        }
    }
    return QSslKey();
}

} // namespace

bool CertificateCheck::isPossible()
{
    return QSslSocket::supportsSsl();
}

QList<QSslCertificate> CertificateCheck::certificatesIn(const QString &content)
{
    return QSslCertificate::fromData(bytesOf(content), isPem(content) ? QSsl::Pem : QSsl::Der);
}

CertificateCheck::Fit CertificateCheck::fit(const QSslCertificate &certificate, const QString &key,
                                            const QString &password)
{
    const QSslKey publicKey = certificate.publicKey();
    if (publicKey.isNull()) {
        return Fit::Unknown;
    }
    QSslKey own = privateKey(key, publicKey.algorithm(), password);
    if (!own.isNull()) {
        // A public key in DER ends with its value, a modulus and exponent or a point, and its private key
        // holds the same bytes. As many as these tell any two keys apart.
        constexpr int telling = 32;
        return own.toDer().contains(publicKey.toDer().right(telling)) ? Fit::Fits : Fit::Different;
    }
    for (const QSsl::KeyAlgorithm other : {QSsl::Rsa, QSsl::Ec, QSsl::Dsa}) {
        if (!privateKey(key, other, password).isNull()) {
            return Fit::Different;
        }
    }
    return Fit::Unreadable;
}

#include "document/certificatecheck.h"

#include <QSslKey>
#include <QSslSocket>

namespace {

constexpr QSsl::KeyAlgorithm algorithms[] = {QSsl::Rsa, QSsl::Ec, QSsl::Dsa};

struct Decoded {
    QByteArray bytes;
    QSsl::EncodingFormat format;
};

// PEM is no Base64, since it has dashes. Line breaks in Base64 come from other programs.
Decoded decoded(const QString &content)
{
    const QByteArray base64 = content.simplified().remove(QLatin1Char(' ')).toUtf8();
    const auto der = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    return der ? Decoded{*der, QSsl::Der} : Decoded{content.toUtf8(), QSsl::Pem};
}

// Qt takes a key in PEM under each of the titles, in DER under one only.
QList<QByteArray> pemForms(const QString &key)
{
    const Decoded own = decoded(key);
    if (own.format == QSsl::Pem) {
        return {own.bytes};
    }
    constexpr int longestKey = 0xffff; // bytes of DER; a file of another kind may be huge
    const QByteArray text = own.bytes.left(longestKey).toBase64();
    QList<QByteArray> forms;
    for (const char *title : {"PRIVATE KEY", "ENCRYPTED PRIVATE KEY", "RSA PRIVATE KEY", "EC PRIVATE KEY"}) {
        constexpr int lineLength = 64;
        QByteArray pem = QByteArray("-----BEGIN ") + title + "-----\n";
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

// Takes the first element of a DER text off it and gives its content; the tag is 0 where there is none.
QByteArray takeElement(QByteArray *der, quint8 *tag)
{
    const auto byte = [der](int at) { return at < der->size() ? quint8(der->at(at)) : quint8(0); };
    *tag = byte(0);
    int begin = 2;
    int length = byte(1);
    if (length > 0x80) { // a count of bytes that hold the length; no key needs more than two
        begin += length - 0x80;
        length = begin == 3 ? byte(2) : begin == 4 ? byte(2) * 256 + byte(3) : der->size();
    }
    const QByteArray content = der->mid(begin, length);
    der->remove(0, begin + length);
    return content;
}

// The first coordinate of the public point in a private EC key (RFC 5915); empty where the key goes without.
QByteArray pointIn(const QSslKey &key)
{
    quint8 tag = 0;
    QByteArray der = key.toDer();
    QByteArray parts = takeElement(&der, &tag);
    while (!parts.isEmpty()) {
        QByteArray part = takeElement(&parts, &tag);
        constexpr quint8 publicKeyTag = 0xa1;
        if (tag == publicKeyTag) {
            const QByteArray point = takeElement(&part, &tag).mid(1); // without the count of unused bits
            const bool isWhole = point.startsWith(4);                 // with both coordinates
            return point.mid(1, isWhole ? point.size() / 2 : -1);
        }
    }
    return QByteArray();
}

} // namespace

bool CertificateCheck::isPossible()
{
    return QSslSocket::supportsSsl();
}

QByteArray CertificateCheck::bytesIn(const QString &content)
{
    return decoded(content).bytes;
}

QList<QSslCertificate> CertificateCheck::certificatesIn(const QString &content)
{
    const Decoded own = decoded(content);
    return QSslCertificate::fromData(own.bytes, own.format);
}

int CertificateCheck::keyBits(const QString &content)
{
    for (const QSsl::KeyAlgorithm algorithm : algorithms) {
        const QSslKey key = privateKey(content, algorithm, QString());
        if (!key.isNull()) {
            return key.length();
        }
    }
    return 0;
}

CertificateCheck::Fit CertificateCheck::fit(const QSslCertificate &certificate, const QString &key,
                                            const QString &password)
{
    const QSslKey publicKey = certificate.publicKey();
    if (publicKey.isNull()) {
        return Fit::Unknown;
    }
    QSslKey own = privateKey(key, publicKey.algorithm(), password);
    if (!own.isNull() && own.algorithm() == QSsl::Ec) {
        const QByteArray point = pointIn(own);
        return point.isEmpty()                  ? Fit::Unknown
            : publicKey.toDer().contains(point) ? Fit::Fits
                                                : Fit::Different;
    }
    if (!own.isNull()) {
        // A public key in DER ends with its value, and its private key holds the same bytes. As many as these
        // tell any two keys apart.
        constexpr int telling = 32;
        return own.toDer().contains(publicKey.toDer().right(telling)) ? Fit::Fits : Fit::Different;
    }
    for (const QSsl::KeyAlgorithm other : algorithms) {
        if (!privateKey(key, other, password).isNull()) {
            return Fit::Different;
        }
    }
    return Fit::Unreadable;
}

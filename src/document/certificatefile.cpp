#include "document/certificatefile.h"

#include <QFile>

CertificateFile loadCertificateFile(const QString &path)
{
    CertificateFile result;
    QFile file(path);
    result.opened = file.open(QIODevice::ReadOnly);
    if (!result.opened) {
        return result;
    }
    const QByteArray bytes = file.readAll();
    if (path.endsWith(QLatin1String(".der"))) {
        result.content = QString::fromLatin1(bytes.toBase64());
    } else if (path.endsWith(QLatin1String(".pem")) || path.endsWith(QLatin1String(".crt"))
               || path.endsWith(QLatin1String(".key"))) {
        result.content = QString::fromUtf8(bytes).trimmed();
    }
    return result;
}

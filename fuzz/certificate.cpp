// Certificate and key files: the first byte of the input chooses the file's ending, the rest is the file.

#include "document/certificatefile.h"
#include "fuzztarget.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const char *const endings[] = {".der", ".pem", ".crt", ".key", ".PEM", ""};
    if (size == 0) {
        return 0;
    }
    const char *const ending = endings[data[0] % std::size(endings)];
    const QByteArray bytes = Fuzz::bytesOf(data + 1, size - 1);
    QFile file(folder.filePath(QStringLiteral("file") + QLatin1String(ending)));
    Fuzz::require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(),
                  "the file is written");
    file.close();

    const CertificateFile certificate = loadCertificateFile(file.fileName());
    Fuzz::require(certificate.opened, "the file is opened");
    switch (data[0] % std::size(endings)) {
    case 0:
        Fuzz::require(QByteArray::fromBase64(certificate.content.toLatin1()) == bytes, "DER keeps its bytes");
        break;
    case 1:
    case 2:
    case 3:
        Fuzz::require(certificate.content == certificate.content.trimmed(), "a text is trimmed");
        break;
    default:
        Fuzz::require(certificate.content.isEmpty(), "another ending has no content");
    }
    return 0;
}

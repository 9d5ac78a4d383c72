// Stands in for the fuzzer where there is none: gives a target each file of the given folders, in order.

#include "fuzztarget.h"

#include <QDir>
#include <QFile>

#include <cstdio>

static bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "Unable to read %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s\n", qPrintable(path)); // the last one printed is the one that broke the target
    std::fflush(stdout);
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), std::size_t(bytes.size()));
    return true;
}

int main(int argc, char *argv[])
{
    LLVMFuzzerInitialize(&argc, &argv);
    int replayed = 0;
    for (int argument = 1; argument < argc; ++argument) {
        const QDir folder(QString::fromLocal8Bit(argv[argument]));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        for (const QString &name : names) {
            if (!replay(folder.filePath(name))) {
                return 1;
            }
            ++replayed;
        }
    }
    std::printf("%d files\n", replayed);
    return replayed > 0 ? 0 : 1;
}

#include "fuzztarget.h"

#include "model/projecttree.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    ProjectTree::registerTypes();
    return 0;
}

QList<QByteArray> Fuzz::pieces(const QByteArray &input)
{
    QList<QByteArray> list;
    int at = 0;
    while (at < input.size()) {
        int size = uchar(input[at++]);
        if (size == 0 && input.size() - at >= 2) {
            size = uchar(input[at]) + 256 * uchar(input[at + 1]);
            at += 2;
        }
        list.append(input.mid(at, size));
        at += size;
    }
    return list;
}

void Fuzz::require(bool holds, const char *expected)
{
    if (!holds) {
        std::fprintf(stderr, "Not so: %s\n", expected);
        std::abort();
    }
}

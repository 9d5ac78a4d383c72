#include "app/messagehandler.h"

#include <cstdio>
#include <cstdlib>

void messageHandler(QtMsgType type, const QMessageLogContext &context, const QString &msg)
{
    const QByteArray text = msg.toLocal8Bit();
    // A release build of the libraries gives no file and no function.
    const char *file = context.file ? context.file : "";
    const char *function = context.function ? context.function : "";
    const auto line = static_cast<unsigned>(context.line);
    switch (type) {
    case QtDebugMsg:
        fprintf(stdout, "Debug: %s (%s:%u, %s)\n", text.constData(), file, line, function);
        break;
    case QtInfoMsg:
        fprintf(stdout, "Info: %s (%s:%u, %s)\n", text.constData(), file, line, function);
        break;
    case QtWarningMsg:
        fprintf(stderr, "Warning: %s (%s:%u, %s)\n", text.constData(), file, line, function);
        break;
    case QtCriticalMsg:
        fprintf(stderr, "Critical: %s (%s:%u, %s)\n", text.constData(), file, line, function);
        break;
    case QtFatalMsg:
        fprintf(stderr, "Fatal: %s (%s:%u, %s)\n", text.constData(), file, line, function);
        abort();
    default:
        break;
    }
    fflush(stderr);
    fflush(stdout);
}

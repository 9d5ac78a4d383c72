#pragma once

#include <QMessageLogContext>
#include <QString>

// Prints one line a message: debug and info on standard output, warning, critical and fatal on standard
// error, then flushes both; a fatal message aborts without a flush. To be given to qInstallMessageHandler.
void messageHandler(QtMsgType type, const QMessageLogContext &context, const QString &msg);

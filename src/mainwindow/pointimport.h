#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

class CMainWindow;
class QDialog;

// Brings points of the project's definitions into the table of a Server.
namespace PointImport {

// Shows a dialog with the points of the window's current project, beside those that are open already. It is a
// child of the window, is freed when it closes, and hands what is picked to the window. Without a current
// item nothing shows, and the dialog that was made lives as long as the window.
void open(CMainWindow *window);

// Hands the points and the name of their definition to the form of a Server. A form that takes none, or null,
// drops them in silence.
void deliver(QDialog *form, const QList<QJsonObject> &points, const QString &currentPLC);

} // namespace PointImport

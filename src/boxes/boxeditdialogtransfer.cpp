// The slots of BoxEditDialog that push a file to the Box.

#include "boxes/boxeditdialog.h"
#include "log/activitylog.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "model/workspace.h"
#include "widgets/choosefile.h"
#include "widgets/tell.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QPointer>
#include <QProgressBar>
#include <QStandardItem>

namespace {

// Writes the document with the line ends of the platform; false after a debug line.
bool writeTempFile(const QString &path, const QJsonObject &project)
{
    const QByteArray text = QJsonDocument(project).toJson();
    QFile file(path);
    // A document that was cut short would pass the Box's checksum all the same.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(text) != text.size()
        || !file.flush()) {
        qDebug() << "Could not create temp file:" << file.errorString();
        return false;
    }
    return true;
}

} // namespace

void BoxEditDialog::updateProject()
{
    QStandardItem *current = m_workspace ? m_workspace->currentItem() : nullptr;
    if (!current) {
        qDebug() << "No project selected.";
        return;
    }
    QStandardItem *project = ProjectTree::projectOf(current);
    const QString path =
        project->data(projectPathRole).toString() + QDir::separator() + QLatin1String("temp.json");
    if (!writeTempFile(path, m_workspace->buildProjectJson(project))) {
        return;
    }
    FileTransfer::Job job;
    job.command = Frame::projectTransfer;
    job.path = path;
    job.removeWhenDigested = true;
    push(job, "BoxEditDialog: updateProject");
}

void BoxEditDialog::updateProgram()
{
    const QPointer<BoxEditDialog> alive(this);
    FileTransfer::Job job;
    job.command = Frame::programTransfer;
    job.path = chooseOpenFile(this, tr("Select Program File"), QDir::homePath(),
                              tr("Program Files (*.bin);;All Files (*.*)"));
    if (alive && !job.path.isEmpty()) {
        push(job, "BoxEditDialog: updateProgram");
    }
}

void BoxEditDialog::push(FileTransfer::Job job, const char *logLine)
{
    const QPointer<BoxEditDialog> alive(this);
    job.boxAddress = m_fields.text(QStringLiteral("ip"));
    job.localAddress = m_hostAddress;
    FileTransfer transfer(
        job, this, [this](int percent) { m_progress->setValue(percent); }, m_timeouts);
    const FileTransfer::Result result = transfer.run();
    if (alive && !result.boxText.isEmpty()) {
        Tell::warning(this, result.boxTitle, result.boxText);
    }
    if (alive && !result.line.isEmpty()) {
        appendMessage(result.line);
    }
    if (alive && result.ended) {
        logToFile(QLatin1String(logLine));
    }
}

#include "boxes/boxupload.h"

#include "boxes/boxeditdialog.h"
#include "document/owneronly.h"
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
    const OwnerOnly ownerOnly;
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

BoxUpload::BoxUpload(Route route, QProgressBar *progress, Workspace *workspace, QWidget *form)
    : QObject(form)
    , m_route(std::move(route))
    , m_progress(progress)
    , m_workspace(workspace)
    , m_form(form)
{
}

void BoxUpload::pushProject()
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
    FileTransfer::Job job = m_route();
    job.command = Frame::ProjectTransfer;
    job.path = path;
    job.removeWhenDigested = true;
    push(job, "BoxEditDialog: updateProject");
}

void BoxUpload::pushProgram()
{
    const QPointer<BoxUpload> alive(this);
    const QString path = chooseOpenFile(m_form, BoxEditDialog::tr("Select Program File"), QDir::homePath(),
                                        BoxEditDialog::tr("Program Files (*.bin);;All Files (*.*)"));
    if (!alive || path.isEmpty()) {
        return;
    }
    FileTransfer::Job job = m_route();
    job.command = Frame::ProgramTransfer;
    job.path = path;
    push(job, "BoxEditDialog: updateProgram");
}

void BoxUpload::push(FileTransfer::Job job, const char *logLine)
{
    const QPointer<BoxUpload> alive(this);
    FileTransfer transfer(
        std::move(job), m_form, [this](int percent) { m_progress->setValue(percent); }, m_timeouts);
    const FileTransfer::Result result = transfer.run();
    if (alive && !result.messageText.isEmpty()) {
        Tell::warning(m_form, result.messageTitle, result.messageText);
    }
    if (alive && m_workspace && !result.line.isEmpty()) {
        m_workspace->appendMessage(result.line);
    }
    if (alive && result.ended) {
        logToFile(QLatin1String(logLine));
    }
}

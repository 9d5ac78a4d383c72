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
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QPointer>
#include <QProgressBar>
#include <QStandardItem>
#include <QTimer>

#include <utility>

namespace {

// Writes the document with the line ends of the platform; false after a debug line.
bool writeTempFile(const QString &path, const QJsonObject &project)
{
    const QByteArray text = QJsonDocument(project).toJson();
    const OwnerOnly ownerOnly;
    QFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly | QIODevice::Text);
    // The file is this program's own, so one that was left behind does not keep its mode. A device does.
    if (isOpen && QFileInfo(path).isFile()) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }
    // A document that was cut short would pass the Box's checksum all the same.
    if (!isOpen || file.write(text) != text.size() || !file.flush()) {
        qDebug() << "Could not create temp file:" << file.errorString();
        return false;
    }
    return true;
}

// A wait cursor while the window is blocked: from here on until events flow again or this is gone, so that no
// message has it.
class BlockedCursor
{
public:
    BlockedCursor()
    {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        // The first event of all that come.
        QTimer::singleShot(0, &m_context, [this] { restore(); });
    }
    ~BlockedCursor() { restore(); }
    Q_DISABLE_COPY(BlockedCursor)

private:
    void restore()
    {
        if (std::exchange(m_isSet, false)) {
            QGuiApplication::restoreOverrideCursor();
        }
    }

    QObject m_context;
    bool m_isSet = true;
};

} // namespace

BoxUpload::BoxUpload(Route route, const BoxCommonPage &page, Workspace *workspace, QWidget *form)
    : QObject(form)
    , m_route(std::move(route))
    , m_page(page)
    , m_workspace(workspace)
    , m_form(form)
{
}

void BoxUpload::pushProject()
{
    FileTransfer::Job job = m_route();
    QStandardItem *current = m_workspace ? m_workspace->currentItem() : nullptr;
    if (!current) {
        qDebug() << "No project selected.";
        m_page.project->fail({BoxEditDialog::tr("no project"), job.boxAddress},
                             BoxEditDialog::tr("no node is selected in the tree"));
        return;
    }
    QStandardItem *project = ProjectTree::projectOf(current);
    const QString path =
        project->data(projectPathRole).toString() + QDir::separator() + QLatin1String("temp.json");
    if (!writeTempFile(path, m_workspace->buildProjectJson(project))) {
        m_page.project->fail({project->text(), job.boxAddress},
                             BoxEditDialog::tr("the file temp.json could not be written"));
        return;
    }
    job.command = Frame::ProjectTransfer;
    job.path = path;
    job.removeWhenDigested = true;
    push(job, project->text(), m_page.project, "BoxEditDialog: updateProject");
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
    push(job, QFileInfo(path).fileName(), m_page.program, "BoxEditDialog: updateProgram");
}

void BoxUpload::push(const FileTransfer::Job &job, const QString &what, PushOutcome *outcome,
                     const char *logLine)
{
    const QPointer<BoxUpload> alive(this);
    const PushOutcome::Push push{what, job.boxAddress};
    const int number = outcome->begin(push);
    const FileTransfer::Result result = transfer(job, [&] { outcome->await(number, push); });
    if (alive) {
        outcome->end(number, push, result.ending);
    }
    if (alive && !result.messageText.isEmpty()) {
        Tell::warning(m_form, result.messageTitle, result.messageText);
    }
    if (alive && m_workspace && !result.line.isEmpty()) {
        m_workspace->appendMessage(result.line);
    }
    if (alive && result.endedInTime) {
        logToFile(QLatin1String(logLine));
    }
}

FileTransfer::Result BoxUpload::transfer(const FileTransfer::Job &job, const std::function<void()> &allSent)
{
    const BlockedCursor blocked;
    const auto show = [this, &allSent](int percent) {
        m_page.progress->setValue(percent);
        if (percent == m_page.progress->maximum()) {
            allSent();
        }
    };
    return FileTransfer(job, m_form, show, m_timeouts).run();
}

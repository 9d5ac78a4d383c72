#pragma once

#include "boxes/boxcommonpage.h"
#include "boxes/pushoutcome.h"
#include "boxlink/filetransfer.h"

#include <QObject>

#include <functional>

class QWidget;
class Workspace;

// Pushes the current project or a program to the Box of a form, and tells the user how that went. The form
// may die while a transfer waits, which ends it without a word.
class BoxUpload : public QObject
{
    Q_OBJECT
public:
    // Asked when a transfer begins for the addresses of its job.
    using Route = std::function<FileTransfer::Job()>;

    // Belongs to the form, as the page does. The workspace, not owned, may be null.
    BoxUpload(Route route, const BoxCommonPage &page, Workspace *workspace, QWidget *form);

    // For the transfers that start from now on.
    void setTimeouts(const TransferTimeouts &timeouts) { m_timeouts = timeouts; }

    // Pushes the project of the tree's current item, by way of "temp.json" in the project's folder.
    void pushProject();
    // Asks for a program file and pushes it.
    void pushProgram();

private:
    FileTransfer::Result transfer(const FileTransfer::Job &job, const std::function<void()> &allSent);
    void push(const FileTransfer::Job &job, const QString &what, PushOutcome *outcome, const char *logLine);

    Route m_route;
    BoxCommonPage m_page;
    Workspace *m_workspace;
    QWidget *m_form;
    TransferTimeouts m_timeouts;
};

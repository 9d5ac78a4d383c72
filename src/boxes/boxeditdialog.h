#pragma once

#include "boxes/boxgroups.h"
#include "boxes/boxupload.h"
#include "boxes/protocol.h"
#include "forms/definitionform.h"

class LinkLine;
class PushPreview;
class QLabel;
class QTabWidget;
class RequestLine;

// The form of a Box: shows what its item holds, and works on the real Box through a session that opens with
// the form and is replaced at each Connect. Values travel between fields and Box only at Read and Write,
// between fields and item only at opening and Save; the session stays as it is when another item comes. Any
// slot may end with the form deleted, since some wait in a loop of their own; a caller must not count on it.
class BoxEditDialog : public DefinitionForm
{
    Q_OBJECT
public:
    // Shows the item, which is not owned, must not be null and may be deleted before the form, and connects
    // to the address that it holds. The workspace, not owned, may be null.
    BoxEditDialog(QStandardItem *item, Workspace *workspace);
    ~BoxEditDialog() override;

    QLineEdit *nameEdit() const;

    // The local address that sessions and transfers go out from; "0.0.0.0" for any. It dies with the form.
    QString hostAddress() const { return m_hostAddress; }
    // The present session, or null. Owned by the form.
    Protocol *protocol() const { return m_protocol; }

    // Tells in a line of its own, until the next call or the session's end, that a project whose values the
    // Box reports is not open.
    void showReported(const QString &project, bool isOpen);

    // For the transfers that start from now on.
    void setTransferTimeouts(const TransferTimeouts &timeouts) { m_upload->setTimeouts(timeouts); }

public slots:
    // This one and clearData() are declared here for the order of the slots, which is fixed.
    void saveChanges() override { DefinitionForm::saveChanges(); }
    // Ends the session, if there is one.
    void disconnectFromServer();
    // Replaces the session by a new one to the address in the "IP:" field.
    void connectToServer();
    void showChangeHostAddressDialog();
    void clearData() override { DefinitionForm::clearData(); }
    void rebootDevice();
    // Each asks the Box for one group of settings or sends it what the fields show, on a new session if there
    // is none. The answers fill the fields and are told in messages.
    void readLanAllocation() { readGroup(SettingsGroup::Lan); }
    void writeLanAllocation() { writeGroup(SettingsGroup::Lan); }
    void readWanAllocation() { readGroup(SettingsGroup::Wan); }
    void writeWanAllocation() { writeGroup(SettingsGroup::Wan); }
    void readWifiAllocation() { readGroup(SettingsGroup::Wifi); }
    void writeWifiAllocation() { writeGroup(SettingsGroup::Wifi); }
    void readLteAllocation() { readGroup(SettingsGroup::Lte); }
    void writeLteAllocation() { writeGroup(SettingsGroup::Lte); }
    void readNTPAllocation() { readGroup(SettingsGroup::Ntp); }
    void writeNTPAllocation() { writeGroup(SettingsGroup::Ntp); }
    void readTimeAllocation() { readGroup(SettingsGroup::Time); }
    void writeTimeAllocation() { writeGroup(SettingsGroup::Time); }

    // Here to be a slot, for callers by name.
    void replaceItem(QStandardItem *item) override;
    // Pushes the project of the tree's current item to the Box, by way of "temp.json" in the project's
    // folder.
    void updateProject() { m_upload->pushProject(); }
    // Asks for a program file and pushes it to the Box.
    void updateProgram() { m_upload->pushProgram(); }

signals:
    void sendDataToMainWindow(Protocol::dataMonitoringData data);
    // A report follows, by the Box of this name at the address that the session goes to.
    void reporting(const QString &box, const QString &address);
    // The link is down that went to the address, which is that of reporting().
    void sessionEnded(const QString &address);
    // The Box has not answered for 30 seconds, or has done so.
    void answering(bool answers);

protected:
    // Ends the session first.
    void cancel() override;

private:
    void addHead();
    void addNotice();
    QTabWidget *buildPages();
    QWidget *buildGroupPage(SettingsGroup group);
    void startClock();

    void begin();
    void listenTo(const Protocol *session);
    void considerStatus(Session::Status status);
    void noteResult(const CommandResult &result, const QString &address);
    void tellEnd();
    void loseRequests(void (RequestLine::*loss)());
    void endSession();
    Protocol *session();
    FileTransfer::Job route() const;
    void useHostAddress(const QString &address);
    void warnOfBindingFailure();

    const BoxGroup::Fields &fieldsOf(SettingsGroup group) const { return m_pages[int(group)]; }
    void readGroup(SettingsGroup group);
    void writeGroup(SettingsGroup group);
    // Fills the fields from an answer, logs, and tells the user; the form may be gone afterwards.
    void showSettings(BoxSettings settings);
    void showVersion(const QString &version);
    void tellOffline();
    void passData(const Protocol::dataMonitoringData &report);

    QString m_hostAddress;
    Protocol *m_protocol = nullptr; // a child; null while there is no session
    QString m_sessionName;          // of the Box, when the session began
    QString m_sessionAddress;       // that the session goes to
    FieldGroup m_fields;
    TextField *m_name = nullptr;
    TextField *m_ip = nullptr;
    QVector<BoxGroup::Fields> m_pages; // by SettingsGroup
    BoxUpload *m_upload = nullptr;
    QLabel *m_notice = nullptr; // that reports are dropped
    QLabel *m_status = nullptr;
    QLabel *m_version = nullptr;
    LinkLine *m_link = nullptr;
    PushPreview *m_preview = nullptr;
    RequestLine *m_reboot = nullptr;
    QVector<RequestLine *> m_requests; // by SettingsGroup
};

#pragma once

#include "model/itemref.h"
#include "widgets/editform.h"
#include "widgets/fieldtable.h"

#include <QVector>

class QFormLayout;
class QPushButton;
class QStandardItem;
class Workspace;

// The form of the project's one IEC61850 service: port, authentication, GOOSE publishing, and TLS with its
// certificates, whose content it reads from disk into the item.
class ServiceIEC61850EditDialog : public EditForm
{
    Q_OBJECT
public:
    // The item is not owned and must outlive the form's use of it; a null workspace takes no messages.
    ServiceIEC61850EditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
    ~ServiceIEC61850EditDialog() override;

    // Shows another Service item; what was typed and not saved is overwritten.
    void replaceItem(QStandardItem *item);

public slots:
    void saveChanges();
    void clearData();
    void updateSSLFieldsVisibility();
    void updateIsVerifyClientCertFieldsVisibility();

private:
    // A certificate or key: a path and the content that was read from there.
    struct FileSlot {
        int pathRole;
        int contentRole;
        bool isKey;
        QLabel *label;
        QLineEdit *field;
        QPushButton *select;
        QString path;
        QString content;
    };

    void buildFields(QFormLayout *form);
    void addSlot(QFormLayout *form, const QString &label, const QString &name, int pathRole, bool isKey);
    void fill();
    void updatePasswordVisibility();
    // The path is often longer than its field.
    static void showPath(const FileSlot &slot);
    void selectFile(FileSlot &slot);
    void saveSlot(int index);
    QString readCertificateFile(const QString &path);
    bool isChecked(const char *name) const;

    ItemRef m_item;
    Workspace *m_workspace;    // Not owned; may be null.
    FieldTable m_service;      // the fields above the certificates
    FieldTable m_security;     // the fields between them
    QVector<FileSlot> m_slots; // root, server certificate, server key, then the ten clients
};

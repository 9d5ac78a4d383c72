#pragma once

#include "forms/editform.h"

class QLineEdit;
class QTextEdit;

// The form of the "Edit Project" tab: name, folder (shown only) and description of a project. It knows no
// item; whoever opens it fills it and takes what projectModified reports.
class EditProjectDialog : public EditForm
{
    Q_OBJECT
public:
    EditProjectDialog(const QString &name, const QString &path, const QString &description,
                      QWidget *parent = nullptr);
    ~EditProjectDialog() override;

    void setName(const QString &name);
    void setPath(const QString &path);
    void setDescription(const QString &description);

signals:
    void projectModified(QString name, QString path, QString description);

public slots:
    // Warns if the name is empty, else reports the fields. The form stays open either way.
    void saveChanges();

private:
    QLineEdit *m_name;
    QLineEdit *m_path;
    QTextEdit *m_description;
};

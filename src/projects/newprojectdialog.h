#pragma once

#include <QDialog>

class QFormLayout;
class QLineEdit;
class QTextEdit;

// The modal dialog that asks for a new project's name, folder and description. It checks only that name and
// folder are there; whether they are free is for the receiver of projectCreated.
class NewProjectDialog : public QDialog
{
    Q_OBJECT
public:
    explicit NewProjectDialog(QWidget *parent = nullptr);
    ~NewProjectDialog() override;

signals:
    // The path is the absolute folder; the dialog closes after this, whatever the receiver says.
    void projectCreated(QString name, QString path, QString description);

public slots:
    // Asks for a folder and shows it as the path; a cancelled question leaves the path.
    void browsePath();
    // Warns and stays open if name or path is empty, else emits projectCreated and accepts.
    void createProject();

private:
    void appendFields(QFormLayout *form);

    QLineEdit *m_name;
    QLineEdit *m_path;
    QTextEdit *m_description;
};

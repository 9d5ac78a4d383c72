#pragma once

#include "history/recordingtarget.h"

#include <QDialog>

class QComboBox;
class QFormLayout;
class QLineEdit;

// Asks where a recording is to be written to, or read from: a file, or a database of PostgreSQL if there is a
// driver for it. "OK" checks what can be seen without opening it.
class RecordingDialog : public QDialog
{
    Q_OBJECT
public:
    enum class Purpose { Record, Open };

    // Names what is recorded, and offers the file name, both unless they are empty.
    RecordingDialog(Purpose purpose, const QString &subject, const QString &fileName, QWidget *parent);

    // What is given in the dialog now; of the kind None if that will not do, and *error tells why.
    RecordingTarget target(QString *error) const;

    // Shows the dialog, and gives the answer. The kind is None if there is none, or if the parent has died.
    static RecordingTarget ask(Purpose purpose, const QString &subject, const QString &fileName,
                               QWidget *parent);

private:
    void appendFileFields(QFormLayout *form, const QString &fileName);
    void appendServerFields(QFormLayout *form);
    void showKind();
    void browse();
    void check();
    RecordingTarget fileTarget(QString *error) const;
    RecordingTarget serverTarget(QString *error) const;

    Purpose m_purpose;
    QFormLayout *m_form;
    QComboBox *m_kind;
    QLineEdit *m_file;
    QLineEdit *m_server;
    QLineEdit *m_password;
};

#pragma once

#include "definitions/values.h"
#include "forms/formpart.h"

#include <QString>
#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;
class QStandardItem;

// A certificate or key in a form: the path of its file, shown only, and "Select", which reads the file. The
// item keeps the path and the content that was read from there. The tool tip of the path says what was read;
// a path without content is marked. The cross in the field, or the key "Delete", clears both. Its texts are
// in the shared context CertificateField.
class CertificateField : public QWidget, public FormPart
{
    Q_OBJECT
public:
    enum class Kind { Certificate, Key };

    // The context is the class name of the form, in which its texts are looked up. The line edit is named
    // "<key>Path", the button "<key>Select", by the row that the definition has for the content.
    CertificateField(const char *context, Kind kind, Definitions::Kind definition, int pathRole,
                     int contentRole, QWidget *parent);

    // The label of the row in the form, made once; the text is already translated.
    QLabel *makeLabel(const QString &text);
    // Enables or greys the field and its label.
    void setLive(bool live);

    // Keeps and shows what the item holds.
    void fill(QStandardItem *item) override;
    // Writes the kept path and content; if the field shows another path, warns of it and writes two empty
    // texts for the field that the next function names.
    void save(QStandardItem *item) override;
    // The field that is emptied in place of this one.
    void emptyInstead(const CertificateField *other) { m_emptied = other; }
    // Keeps and shows nothing.
    void clear() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString translated(const char *source) const;
    void warnOfOtherPath();
    void keep(const QString &path, const QString &content);
    void showSummary();
    QString summaryText() const;
    void selectFile();

    const char *m_context;
    Kind m_kind;
    int m_pathRole;
    int m_contentRole;
    const CertificateField *m_emptied = this;
    QLabel *m_label = nullptr;
    QLineEdit *m_field;
    QPushButton *m_select;
    QAction *m_nothingRead; // the mark
    QAction *m_clear;
    QString m_path;
    QString m_content;
};

#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QStandardItem;

// A certificate or key in a form: the path of its file, shown only, and "Select", which reads the file. The
// item keeps the path and the content that was read from there. Its texts stand in the shared context
// CertificateField.
class CertificateField : public QWidget
{
    Q_OBJECT
public:
    enum class Kind { Certificate, Key };

    // The context is the class name of the form, in which its texts are looked up. The line edit is named
    // "<name>Path", the button "<name>Select".
    CertificateField(const char *context, Kind kind, const QString &name, int pathRole, int contentRole,
                     QWidget *parent);

    // The label of the row in the form, made once; the text is already translated.
    QLabel *makeLabel(const QString &text);
    // Enables or greys the field and its label.
    void setLive(bool live);

    // Keeps and shows what the item holds.
    void fill(const QStandardItem *item);
    // Writes the kept path and content; false, and nothing written, if the field shows another path.
    bool save(QStandardItem *item) const;
    // Writes two empty texts.
    void erase(QStandardItem *item) const;
    // Keeps and shows nothing.
    void clear();
    // The box for a save that returned false. The form may be gone when this returns.
    void warnOfOtherPath();

private:
    QString translated(const char *source) const;
    void keep(const QString &path, const QString &content);
    void selectFile();

    const char *m_context;
    Kind m_kind;
    int m_pathRole;
    int m_contentRole;
    QLabel *m_label = nullptr;
    QLineEdit *m_field;
    QPushButton *m_select;
    QString m_path;
    QString m_content;
};

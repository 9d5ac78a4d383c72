#include "trends/recordingdialog.h"

#include "forms/formpage.h"
#include "widgets/choosefile.h"
#include "widgets/combobox.h"
#include "widgets/passwordeye.h"
#include "widgets/tell.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

using Kind = RecordingTarget::Kind;

namespace {

// What was given last, for the next time; the password is not kept.
QString &lastServer()
{
    static QString address;
    return address;
}

// The folder of the recording that was given last, or the program's own.
QString &folder()
{
    static QString path = QDir::currentPath();
    return path;
}

// An empty file is a database without tables.
bool mayBeSqlite(const QString &path)
{
    QFile file(path);
    const QByteArray magic("SQLite format 3", 16); // with the zero behind it
    return file.open(QIODevice::ReadOnly) && (file.size() == 0 || file.read(magic.size()) == magic);
}

void showRow(const QFormLayout *form, QWidget *field, bool visible)
{
    field->setVisible(visible);
    if (QWidget *label = form->labelForField(field)) {
        label->setVisible(visible);
    }
}

} // namespace

RecordingDialog::RecordingDialog(Purpose purpose, const QString &subject, const QString &fileName,
                                 QWidget *parent)
    : QDialog(parent)
    , m_purpose(purpose)
    , m_form(new QFormLayout)
    , m_kind(new ComboBox(this))
    , m_file(new QLineEdit(this))
    , m_server(new QLineEdit(this))
    , m_password(new QLineEdit(this))
{
    setWindowTitle(purpose == Purpose::Record ? tr("Record") : tr("Open Recording"));
    setMinimumWidth(560);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(m_form);
    if (!subject.isEmpty()) {
        auto *what = new QLabel(subject, this);
        what->setTextFormat(Qt::PlainText);
        what->setWordWrap(true);
        m_form->addRow(tr("Values:"), what);
    }
    m_kind->setObjectName(QStringLiteral("kind"));
    const QVector<Kind> kinds = RecordingTarget::available();
    for (const Kind kind : kinds) {
        m_kind->addItem(kind == Kind::File ? tr("SQLite file") : QStringLiteral("PostgreSQL"), int(kind));
    }
    m_form->addRow(tr("Database:"), m_kind);
    showRow(m_form, m_kind, kinds.size() > 1);
    appendFileFields(m_form, fileName);
    appendServerFields(m_form);
    connect(m_kind, qOverload<int>(&QComboBox::currentIndexChanged), this, &RecordingDialog::showKind);
    showKind();
    layout->addStretch();
    const QPushButton *ok = FormPage::appendDialogButtons(layout, tr("OK"), tr("Cancel"));
    connect(ok, &QPushButton::clicked, this, &RecordingDialog::check);
}

void RecordingDialog::appendFileFields(QFormLayout *form, const QString &fileName)
{
    m_file->setObjectName(QStringLiteral("file"));
    if (!fileName.isEmpty()) {
        const QString name = asFileName(fileName) + QStringLiteral(".sqlite");
        m_file->setText(QDir::toNativeSeparators(QDir(folder()).filePath(name)));
    }
    auto *browseButton = FormPage::button(tr("Browse"), QStringLiteral(":/adsdemo/images/look.svg"), this);
    browseButton->setObjectName(QStringLiteral("browseButton"));
    connect(browseButton, &QPushButton::clicked, this, &RecordingDialog::browse);
    auto *row = new QWidget(this);
    row->setObjectName(QStringLiteral("fileRow"));
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_file);
    layout->addWidget(browseButton);
    form->addRow(tr("File:"), row);
    qobject_cast<QLabel *>(form->labelForField(row))->setBuddy(m_file);
    m_file->setAccessibleName(tr("File:")); // a label names only what stands beside it
    if (m_purpose == Purpose::Record) {
        m_file->setToolTip(tr("What the file already holds stays, and the recording is added"));
    }
}

void RecordingDialog::appendServerFields(QFormLayout *form)
{
    m_server->setObjectName(QStringLiteral("server"));
    m_server->setPlaceholderText(QStringLiteral("postgresql://user@host:5432/database"));
    m_server->setText(lastServer());
    m_password->setObjectName(QStringLiteral("password"));
    new PasswordEye(tr("Show the password while held (F8)"), m_password);
    form->addRow(tr("Address:"), m_server);
    form->addRow(tr("Password:"), m_password);
}

void RecordingDialog::showKind()
{
    const bool isFile = Kind(m_kind->currentData().toInt()) == Kind::File;
    showRow(m_form, m_file->parentWidget(), isFile);
    showRow(m_form, m_server, !isFile);
    showRow(m_form, m_password, !isFile);
}

void RecordingDialog::browse()
{
    const QPointer<RecordingDialog> self(this);
    const QString filter = tr("Recordings (*.sqlite)");
    const QFileInfo given(m_file->text());
    const QString at = m_file->text().isEmpty() ? folder() : given.absolutePath();
    const QString path = m_purpose == Purpose::Open
        ? chooseOpenFile(this, windowTitle(), at, filter)
        : chooseGrowingFile(this, windowTitle(), at, filter, given.completeBaseName());
    if (self && !path.isEmpty()) {
        m_file->setText(QDir::toNativeSeparators(path));
    }
}

RecordingTarget RecordingDialog::fileTarget(QString *error) const
{
    const QString text = m_file->text().trimmed();
    const QFileInfo file(QDir::fromNativeSeparators(text));
    const QString path = file.absoluteFilePath();
    if (text.isEmpty()) {
        *error = tr("The name of the file is missing.");
    } else if (m_purpose == Purpose::Open && !file.isFile()) {
        *error = tr("There is no file %1.").arg(path);
    } else if (!file.dir().exists()) {
        *error = tr("There is no folder %1.").arg(file.absolutePath());
    } else if (file.isDir()) {
        *error = tr("%1 is a folder.").arg(path);
    } else if (file.exists() && !file.isReadable()) {
        *error = tr("The file %1 cannot be read.").arg(path);
    } else if (file.exists() && !mayBeSqlite(path)) {
        *error = tr("The file %1 is no recording.").arg(path);
    } else if (m_purpose == Purpose::Record
               && !(QFileInfo(file.absolutePath()).isWritable() && (!file.exists() || file.isWritable()))) {
        *error = tr("The file %1 and its folder cannot be written to.").arg(path);
    } else {
        RecordingTarget target;
        target.kind = Kind::File;
        target.file = path;
        return target;
    }
    return {};
}

RecordingTarget RecordingDialog::serverTarget(QString *error) const
{
    RecordingTarget target = RecordingTarget::fromText(m_server->text().trimmed(), error);
    if (target.kind == Kind::File) {
        *error = tr("The address begins with postgresql://.");
        return {};
    }
    if (target.kind == Kind::Server && !m_password->text().isEmpty()) {
        target.server.setPassword(m_password->text(), QUrl::DecodedMode);
    }
    return target;
}

RecordingTarget RecordingDialog::target(QString *error) const
{
    return Kind(m_kind->currentData().toInt()) == Kind::File ? fileTarget(error) : serverTarget(error);
}

void RecordingDialog::check()
{
    QString error;
    const RecordingTarget given = target(&error);
    if (given.kind == Kind::None) {
        Tell::warning(this, windowTitle(), error);
        return;
    }
    if (given.kind == Kind::File) {
        folder() = QFileInfo(given.file).absolutePath();
    } else {
        lastServer() = given.text();
    }
    accept();
}

RecordingTarget RecordingDialog::ask(Purpose purpose, const QString &subject, const QString &fileName,
                                     QWidget *parent)
{
    if (RecordingTarget::available().isEmpty()) {
        Tell::warning(parent, purpose == Purpose::Record ? tr("Record") : tr("Open Recording"),
                      tr("Recordings need a driver of Qt SQL, for SQLite or PostgreSQL; there is none."));
        return {};
    }
    const QPointer<RecordingDialog> dialog(new RecordingDialog(purpose, subject, fileName, parent));
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {};
    }
    dialog->deleteLater();
    QString error;
    return accepted ? dialog->target(&error) : RecordingTarget();
}

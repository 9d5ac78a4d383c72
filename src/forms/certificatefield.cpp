#include "forms/certificatefield.h"

#include "document/certificatefile.h"
#include "document/certificatesummary.h"
#include "forms/formpage.h"
#include "model/itemref.h"
#include "widgets/choosefile.h"
#include "widgets/showonly.h"
#include "widgets/tell.h"
#include "widgets/tooltip.h"

#include <QAction>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStandardItem>

CertificateField::CertificateField(const char *context, Kind kind, Definitions::Kind definition, int pathRole,
                                   int contentRole, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_kind(kind)
    , m_pathRole(pathRole)
    , m_contentRole(contentRole)
    , m_field(new QLineEdit(this))
    , m_select(FormPage::button(translated(QT_TRANSLATE_NOOP("CertificateField", "Select")),
                                QStringLiteral(":/adsdemo/images/look.svg"), this))
    , m_nothingRead(m_field->addAction(QIcon(QStringLiteral(":/adsdemo/images/nothing-read.svg")),
                                       QLineEdit::LeadingPosition))
    , m_clear(m_field->addAction(QIcon(QStringLiteral(":/adsdemo/images/cancel.svg")),
                                 QLineEdit::TrailingPosition))
{
    const QString name = QString::fromLatin1(Definitions::valueOf(definition, contentRole).key);
    m_field->setObjectName(name + QStringLiteral("Path"));
    ShowOnly::make(m_field);
    m_select->setObjectName(name + QStringLiteral("Select"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_field);
    row->addWidget(m_select);
    connect(m_select, &QPushButton::clicked, this, &CertificateField::selectFile);
    m_nothingRead->setText(
        translated(QT_TRANSLATE_NOOP("CertificateField", "Nothing was read from this file")));
    m_clear->setText(translated(QT_TRANSLATE_NOOP("CertificateField", "Clear path and content (Delete)")));
    connect(m_clear, &QAction::triggered, this, &CertificateField::clear);
    m_field->installEventFilter(this); // no shortcut: line edits claim the key, read-only ones too
    showSummary();
}

QLabel *CertificateField::makeLabel(const QString &text)
{
    m_label = new QLabel(text, parentWidget());
    m_label->setBuddy(m_select);
    m_field->setAccessibleName(text); // the label names the button
    return m_label;
}

void CertificateField::setLive(bool live)
{
    setEnabled(live);
    if (m_label) {
        m_label->setEnabled(live);
    }
}

void CertificateField::fill(QStandardItem *item)
{
    keep(item->data(m_pathRole).toString(), item->data(m_contentRole).toString());
}

void CertificateField::save(QStandardItem *item)
{
    if (m_field->text() == m_path) {
        item->setData(m_path, m_pathRole);
        item->setData(m_content, m_contentRole);
        return;
    }
    const ItemRef saved(item);
    const QPointer<CertificateField> alive(this);
    warnOfOtherPath();
    if (alive && saved.item()) {
        item->setData(QString(), m_emptied->m_pathRole);
        item->setData(QString(), m_emptied->m_contentRole);
    }
}

void CertificateField::clear()
{
    keep(QString(), QString());
}

void CertificateField::warnOfOtherPath()
{
    Tell::warning(
        this, translated(QT_TRANSLATE_NOOP("CertificateField", "Warning")),
        m_kind == Kind::Key
            ? translated(QT_TRANSLATE_NOOP(
                "CertificateField",
                "The key storage path is inconsistent with the loading path.Please select the key again."
                "Prevent data loss."))
            : translated(QT_TRANSLATE_NOOP(
                "CertificateField",
                "The certificate storage path is inconsistent with the loading path.Please select the "
                "certificate again.Prevent data loss.")));
}

QString CertificateField::translated(const char *source) const
{
    return QCoreApplication::translate(m_context, source);
}

void CertificateField::keep(const QString &path, const QString &content)
{
    m_path = path;
    m_content = content;
    m_field->setText(path);
    showSummary();
}

void CertificateField::showSummary()
{
    m_nothingRead->setVisible(!m_path.isEmpty() && m_content.isEmpty());
    m_clear->setVisible(!m_path.isEmpty() || !m_content.isEmpty());
    const QString summary = summaryText();
    // With the path, which is often longer than its field.
    QStringList lines{m_path, summary};
    lines.removeAll(QString());
    m_field->setToolTip(plainToolTip(lines.join(QLatin1Char('\n'))));
    m_field->setAccessibleDescription(summary);
}

QString CertificateField::summaryText() const
{
    const CertificateSummary summary = summaryOf(m_content);
    switch (summary.kind) {
    case CertificateSummary::Nothing:
        return m_path.isEmpty() ? QString() : m_nothingRead->text();
    case CertificateSummary::Certificate:
        return translated(QT_TRANSLATE_NOOP("CertificateField", "Certificate of %1, valid until %2"))
            .arg(summary.subject, summary.validUntil.toString(Qt::ISODate));
    case CertificateSummary::Key:
        return translated(QT_TRANSLATE_NOOP("CertificateField", "Private key of %1 bits"))
            .arg(summary.keyBits);
    case CertificateSummary::Unknown:
        break;
    }
    return translated(QT_TRANSLATE_NOOP("CertificateField", "%1 bytes were read")).arg(summary.size);
}

bool CertificateField::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        clear();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void CertificateField::selectFile()
{
    const QString path = m_kind == Kind::Key
        ? chooseOpenFile(this, translated(QT_TRANSLATE_NOOP("CertificateField", "Select Key File")),
                         QString(),
                         translated(QT_TRANSLATE_NOOP("CertificateField", "Keys (*.der *.pem *.crt *.key)")))
        : chooseOpenFile(
            this, translated(QT_TRANSLATE_NOOP("CertificateField", "Select Certificate File")), QString(),
            translated(QT_TRANSLATE_NOOP("CertificateField", "Certificates (*.der *.pem *.crt *.key)")));
    if (path.isEmpty()) {
        return;
    }
    const CertificateFile file = loadCertificateFile(path);
    keep(path, file.content);
    if (!file.opened) {
        Tell::warning(this, translated(QT_TRANSLATE_NOOP("CertificateField", "Error")),
                      translated(QT_TRANSLATE_NOOP("CertificateField", "Failed to open file: %1")).arg(path));
    }
}

#include "trends/recordingrow.h"

#include "widgets/quietline.h"
#include "widgets/svgicon.h"

#include <QHBoxLayout>
#include <QLabel>

RecordingRow::RecordingRow(QWidget *parent)
    : QWidget(parent)
    , m_line(new QuietLine(this))
{
    m_line->setObjectName(QStringLiteral("recordingLine"));
    auto *mark = new QLabel(this);
    mark->setPixmap(svgIcon(QStringLiteral(":/adsdemo/images/record.svg")).pixmap(18));
    mark->setToolTip(tr("Recording"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mark);
    layout->addWidget(m_line, 1);
    hide();
}

void RecordingRow::setText(const QString &text)
{
    m_line->setText(text);
    setVisible(!text.isEmpty());
}

bool RecordingRow::isRecording() const
{
    return !m_line->text().isEmpty();
}

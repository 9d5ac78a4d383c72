#include "trends/recordingline.h"

#include "widgets/quietline.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int markSize = 10;            // pixels
const QColor markRed(0xef, 0x53, 0x50); // contrast above 3 to 1 on a light and on a dark ground

} // namespace

RecordingLine::RecordingLine(QWidget *parent)
    : QWidget(parent)
    , m_line(new QuietLine(this))
{
    setObjectName(QStringLiteral("recordingLine"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(markSize + 4, 0, 0, 0);
    layout->addWidget(m_line);
    hide();
}

QString RecordingLine::text() const
{
    return m_line->text();
}

void RecordingLine::setText(const QString &text)
{
    m_line->setText(text);
    setVisible(!text.isEmpty());
}

void RecordingLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(markRed);
    painter.drawEllipse(2, (height() - markSize) / 2, markSize, markSize);
}

#include "monitoring/sourceline.h"

#include "widgets/tooltip.h"

#include <QPainter>

namespace {

QString ageText(qint64 age)
{
    const qint64 seconds = age / 1000;
    if (seconds < 120) {
        return SourceLine::tr("%1 s ago").arg(seconds);
    }
    const qint64 minutes = seconds / 60;
    return minutes < 120 ? SourceLine::tr("%1 min ago").arg(minutes)
                         : SourceLine::tr("%1 h ago").arg(minutes / 60);
}

} // namespace

SourceLine::SourceLine(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("source"));
    setTextFormat(Qt::PlainText); // names of the user and of the Box
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    hide();
}

void SourceLine::noteReport(const LiveSource &source, qint64 time)
{
    m_freshness[source].report(time);
}

void SourceLine::showReport(const LiveSource &source, qint64 now)
{
    m_shown = source;
    m_project = source.project;
    m_link = Link::Up;
    noteReport(source, now);
}

void SourceLine::setAnswering(bool answers)
{
    if (m_link != Link::Ended) {
        setLink(answers ? Link::Up : Link::Silent);
    }
}

void SourceLine::setLink(Link link)
{
    if (link != Link::Up) {
        for (Freshness &freshness : m_freshness) {
            freshness.interrupt();
        }
    }
    if (!m_shown.box.isEmpty() || !m_shown.address.isEmpty()) {
        m_link = link;
    }
}

void SourceLine::refresh(qint64 now)
{
    const Freshness shown = m_freshness.value(m_shown);
    if (!shown.hasReport()) {
        return;
    }
    // What is wrong comes first, since the end is cut off where there is no room.
    QStringList parts;
    const bool isOther = !m_wanted.isEmpty();
    if (isOther) {
        parts.append(tr("NOT of '%1', whose node is selected").arg(m_wanted));
    }
    bool outOfDate = true;
    if (m_link == Link::Ended) {
        parts.append(tr("Out of date: not connected"));
    } else if (m_link == Link::Silent) {
        parts.append(tr("Out of date: the Box does not answer"));
    } else if (shown.isLate(now)) {
        parts.append(tr("Out of date: no new report"));
    } else {
        outOfDate = false;
    }
    parts +=
        {m_project, (m_shown.box + QLatin1Char(' ') + m_shown.address).trimmed(), ageText(shown.age(now))};
    parts.removeAll(QString());
    setText(parts.join(QStringLiteral(" · ")));
    setToolTip(
        plainToolTip(text() + QLatin1Char('\n')
                     + tr("Project, Box and address of these values, and the time since their last report")));
    m_outOfDate = outOfDate;
    if (font().bold() != (outOfDate || isOther)) {
        QFont weighed = font();
        weighed.setBold(!weighed.bold());
        setFont(weighed);
    }
    show();
}

QSize SourceLine::sizeHint() const
{
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    return {metrics.horizontalAdvance(text()), qMax(metrics.height(), fontMetrics().height()) + 2};
}

QSize SourceLine::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void SourceLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

#include "trends/trendnote.h"

#include "trends/timeview.h"
#include "trends/trendtexts.h"

TrendNote::TrendNote(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("note"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    hide();
}

void TrendNote::tell(Kind kind, const QString &text)
{
    if (text == m_lines[kind]) {
        return;
    }
    m_lines[kind] = text;
    QStringList lines(std::begin(m_lines), std::end(m_lines));
    lines.removeAll(QString());
    setText(lines.join(QLatin1Char('\n')));
    setVisible(!lines.isEmpty());
}

void TrendNote::tellExcess(int points, int taken)
{
    tell(Excess,
         points > taken ? tr("Of %1 points only the first %2 were taken: more could not be told apart.")
                              .arg(points)
                              .arg(taken)
                        : QString());
}

void TrendNote::tellAhead(qint64 ahead)
{
    constexpr qint64 second = TimeView::second;
    const qint64 rounded = (ahead + second / 2) / second * second;
    tell(Clock,
         ahead > 0
             ? tr("The clock of this computer was set back. The times go on from before, %1 ahead of it.")
                   .arg(TrendTexts::ofDuration(rounded))
             : QString());
}

#include "widgets/timedtext.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>

namespace {

constexpr int padding = 4; // pixels on either side of the times

// With the day, since a message may stand there for days.
QString timeFormat()
{
    return QStringLiteral("MM-dd HH:mm:ss");
}

struct LineTime : QTextBlockUserData {
    QString text = QDateTime::currentDateTime().toString(timeFormat());
};

QString timeOfBlock(const QTextBlock &block)
{
    const auto *time = static_cast<const LineTime *>(block.userData());
    return time ? time->text : QString();
}

} // namespace

TimedText::TimedText(QWidget *parent)
    : QPlainTextEdit(parent)
    , m_margin(new QWidget(this))
{
    m_margin->setObjectName(QStringLiteral("times"));
    m_margin->installEventFilter(this);
    connect(document(), &QTextDocument::contentsChange, this,
            [this](int position, int, int added) { noteLines(position, added); });
    connect(this, &QPlainTextEdit::textChanged, this, &TimedText::makeRoom);
    connect(this, &QPlainTextEdit::updateRequest, m_margin, qOverload<>(&QWidget::update));
    makeRoom();
}

QString TimedText::timeOf(int line) const
{
    return timeOfBlock(document()->findBlockByNumber(line));
}

void TimedText::noteLines(int position, int added)
{
    const QTextBlock end = document()->findBlock(position + added).next();
    for (QTextBlock block = document()->findBlock(position); block.isValid() && block != end;
         block = block.next()) {
        if (block.text().isEmpty()) {
            block.setUserData(nullptr);
        } else if (!block.userData()) {
            block.setUserData(new LineTime); // the block owns it
        }
    }
}

void TimedText::makeRoom()
{
    const QString widest(timeFormat().size(), QLatin1Char('0'));
    const int width = document()->isEmpty() ? 0 : fontMetrics().horizontalAdvance(widest) + 2 * padding;
    setViewportMargins(width, 0, 0, 0);
    const QRect inside = contentsRect();
    m_margin->setGeometry(inside.left(), inside.top(), width, viewport()->height());
}

void TimedText::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    makeRoom();
}

void TimedText::changeEvent(QEvent *event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        makeRoom();
    }
}

bool TimedText::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_margin && event->type() == QEvent::Paint) {
        paintTimes();
        return true;
    }
    // The wheel and the menu are the text's own, beside it as over it.
    if (watched == m_margin && event->type() == QEvent::Wheel) {
        QCoreApplication::sendEvent(viewport(), event);
        return true;
    }
    if (watched == m_margin && event->type() == QEvent::ContextMenu) {
        const auto *menu = static_cast<QContextMenuEvent *>(event);
        QContextMenuEvent mapped(menu->reason(), viewport()->mapFromGlobal(menu->globalPos()),
                                 menu->globalPos(), menu->modifiers());
        QCoreApplication::sendEvent(viewport(), &mapped);
        event->setAccepted(mapped.isAccepted());
        return true;
    }
    return QPlainTextEdit::eventFilter(watched, event);
}

void TimedText::paintTimes()
{
    QPainter painter(m_margin);
    painter.fillRect(m_margin->rect(), palette().base());
    painter.setPen(palette().color(QPalette::Text));
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
        const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
        if (place.top() > m_margin->height()) {
            break;
        }
        // On the base line of the text, which a glyph of another font may move down.
        const QTextLine line = block.layout()->lineAt(0);
        painter.drawText(QPointF(padding, place.top() + line.y() + line.ascent()), timeOfBlock(block));
    }
}

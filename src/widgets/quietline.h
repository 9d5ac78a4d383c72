#pragma once

#include <QTimer>
#include <QWidget>

// A small line of plain text that asks for no width: what has no room is left out, and the tool tip says it
// whole. A label would ask for all of its width.
class QuietLine : public QWidget
{
    Q_OBJECT
public:
    explicit QuietLine(QWidget *parent);

    const QString &text() const { return m_text; }
    void setText(const QString &text);
    // Shows the line with its colours exchanged for a moment.
    void highlight();
    bool isHighlighted() const { return m_moment.isActive(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    inline static int moment = 2000; // milliseconds; for tests to shorten

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QTimer m_moment;
};

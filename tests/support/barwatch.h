#pragma once

#include <QApplication>
#include <QObject>
#include <QPaintEvent>
#include <QProgressBar>
#include <QSet>
#include <QVector>

// Sees what the progress bars of the program show while it lives.
class BarWatch : public QObject
{
public:
    BarWatch() { qApp->installEventFilter(this); }

    // What was painted, in order, and of bars of which lengths.
    QVector<int> values() const { return m_values; }
    QSet<int> maxima() const { return m_maxima; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *bar = qobject_cast<QProgressBar *>(watched);
        if (bar && event->type() == QEvent::Paint) {
            m_values.append(bar->value());
            m_maxima.insert(bar->maximum());
        }
        return false;
    }

private:
    QVector<int> m_values;
    QSet<int> m_maxima;
};

#pragma once

#include <QElapsedTimer>
#include <QString>

#include <memory>

class QProgressBar;
class QWidget;

// How far a work in one go has come, for one that takes longer than a second: a bar in the middle of the
// window. It is painted without handling any event, so nobody can act on what is half done; what the user
// types and clicks meanwhile waits. The steps of one that begins within the life of another are steps of
// that.
class Progress
{
public:
    // The text is already translated. The widget, not owned, is in that window and outlives this.
    Progress(QWidget *widget, QString text, int steps);
    ~Progress();
    Q_DISABLE_COPY(Progress)

    // So many steps are done.
    void advance(int done);

    inline static int delay = 1000; // before the bar appears, in milliseconds; for tests to shorten

private:
    void show(int done);

    inline static Progress *outermost = nullptr;

    Progress *m_outer;
    int m_outerDone; // steps of the outer one when this one began
    int m_done = 0;
    QWidget *m_widget;
    QString m_text;
    int m_steps;
    qint64 m_nextMove = delay; // milliseconds since the beginning
    QElapsedTimer m_clock;
    std::unique_ptr<QProgressBar> m_bar;
};

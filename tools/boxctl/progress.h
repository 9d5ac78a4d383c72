#pragma once

#include <QElapsedTimer>
#include <QStringList>

#include <functional>

// What Boxes are doing, drawn on the terminal that the standard error is, and drawn anew in its place. Where
// it is none, nothing is drawn.
class Progress
{
public:
    explicit Progress(int pause); // ms between two drawings

    // A line for each of so many Boxes and the total below them; where there is no room for all, the last of
    // the lines tells how many more there are. False if it is too soon to draw.
    bool draw(int count, const std::function<QString(int)> &line, const QString &total);
    // To be called before anything else is printed.
    void clear();
    // Ends the drawing with this total, which stays.
    void end(const QString &total);

private:
    static void print(const QString &line);

    int m_pause;
    int m_lines = 0; // above the cursor
    QElapsedTimer m_drawnAt;
};

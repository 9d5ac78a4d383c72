#pragma once

#include <QLabel>

// The note above a trend: a line for each thing that the user should know. Hidden while there is none.
class TrendNote : public QLabel
{
    Q_OBJECT
public:
    enum Kind { Failure, Excess, Clock, KindCount };

    explicit TrendNote(QWidget *parent);

    // In place of the last one of the kind; empty for none.
    void tell(Kind kind, const QString &text);
    // Of so many points the first ones were taken.
    void tellExcess(int points, int taken);
    // The times are ahead of the clock by so many ms; 0 for none.
    void tellAhead(qint64 ahead);

private:
    QString m_lines[KindCount];
};

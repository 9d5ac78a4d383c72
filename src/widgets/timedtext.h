#pragma once

#include <QPlainTextEdit>

// A text that says beside each line when it came. The times are no part of the text.
class TimedText : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit TimedText(QWidget *parent = nullptr);

    // What stands beside a line, counted from 0: empty for a line without a text.
    QString timeOf(int line) const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void noteLines(int position, int added);
    void makeRoom();
    void paintTimes();

    QWidget *m_margin;
};

#pragma once

#include <QLabel>

// Plain text in a form that tells how something stands or has ended. What is amiss is red and bold; its words
// have to say so, too.
class OutcomeLine : public QLabel
{
    Q_OBJECT
public:
    explicit OutcomeLine(QWidget *parent);

    void showLine(const QString &text, bool isAmiss);
    bool isAmiss() const { return m_isAmiss; }
    // The line is as high as so many lines of text even where it needs fewer, so that what stands below does
    // not move.
    void keepRoom(int lines);

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setColor();
    void claimHeight();

    bool m_isAmiss = false;
    int m_room = 0; // pixels
};

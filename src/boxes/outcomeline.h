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

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setColor();
    void claimHeight();

    bool m_isAmiss = false;
};

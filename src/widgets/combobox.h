#pragma once

#include <QComboBox>

// A list of a form. The wheel changes it only while it has the focus, which the wheel does not give it:
// otherwise the page below is scrolled, and no value changes on the way.
class ComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit ComboBox(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

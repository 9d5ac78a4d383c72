#pragma once

// The widget of a cell. A view shows each widget that it is given, which styles it at once; this one waits
// until its table shows it by QWidget::setVisible().
template <class Widget> class CellWidget : public Widget
{
public:
    using Widget::Widget;

    void setVisible(bool visible) override
    {
        if (!visible) {
            Widget::setVisible(false);
        }
    }
};

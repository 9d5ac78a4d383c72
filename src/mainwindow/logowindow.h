#pragma once

#include <QDialog>

// The about window: the logo and nothing else.
class LogoWindow : public QDialog
{
    Q_OBJECT
public:
    explicit LogoWindow(QWidget *parent);
};

#include "mainwindow/logowindow.h"

#include <QLabel>
#include <QVBoxLayout>

LogoWindow::LogoWindow(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("About"));
    setStyleSheet(QStringLiteral("background-color: white;"));
    auto *logo = new QLabel(this);
    logo->setPixmap(QPixmap(QStringLiteral(":/adsdemo/images/logo.png")));
    logo->setAlignment(Qt::AlignCenter);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(logo);
}

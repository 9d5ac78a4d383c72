#include "mainwindow/logowindow.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

class TestLogoWindow : public QObject
{
    Q_OBJECT

private slots:
    void showsTheLogoAndNothingElse();
    void isModeless();
};

void TestLogoWindow::showsTheLogoAndNothingElse()
{
    const LogoWindow window(nullptr);
    QCOMPARE(window.windowTitle(), LogoWindow::tr("About"));
    QCOMPARE(window.styleSheet(), "background-color: white;");
    QVERIFY(qobject_cast<QVBoxLayout *>(window.layout()));

    const auto widgets = window.findChildren<QWidget *>();
    QCOMPARE(widgets.size(), 1);
    const auto *logo = qobject_cast<QLabel *>(widgets.first());
    QVERIFY(logo);
    QCOMPARE(logo->alignment(), Qt::Alignment(Qt::AlignCenter));
    const QPixmap picture(":/adsdemo/images/logo.png");
    QVERIFY(!picture.isNull());
    QCOMPARE(logo->pixmap(Qt::ReturnByValue).toImage(), picture.toImage());
}

void TestLogoWindow::isModeless()
{
    LogoWindow window(nullptr);
    window.show();
    QVERIFY(window.isVisible());
    QVERIFY(!window.isModal());
}

QTEST_MAIN(TestLogoWindow)
#include "tst_logowindow.moc"

#include "mainwindow/floatingdocks.h"

#include "docksundertest.h"
#include "modalwatch.h"

#include <QDialog>
#include <QLabel>
#include <QScreen>

// Where a dock comes up that is taken out of the window.
class TestFloatingDocks : public QObject
{
    Q_OBJECT
private slots:
    void comesUpWholeOnTheScreen_data();
    void comesUpWholeOnTheScreen();
    void whatIsNoFormKeepsItsSize();
    void isMovedAsItComesUpAlone();
    void dialogIsRaisedAboveThem_data();
    void dialogIsRaisedAboveThem();
};

// Counts how often its widget is raised.
class Raises : public QObject
{
public:
    explicit Raises(QWidget *widget)
        : QObject(widget)
    {
        widget->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::ZOrderChange ? 1 : 0;
        return false;
    }
    int count = 0;
};

static QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

void TestFloatingDocks::comesUpWholeOnTheScreen_data()
{
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<bool>("moves");
    const QRect inside(available().topLeft() + QPoint(100, 80), QSize(400, 300));
    QTest::newRow("inside") << inside << false;
    QTest::newRow("across the lower edge") << inside.translated(0, 400) << true;
    QTest::newRow("beyond the lower right") << inside.translated(2000, 2000) << true;
    QTest::newRow("beyond the upper left") << inside.translated(-150, -150) << true;
    QTest::newRow("larger than the screen") << available().adjusted(-10, 20, 300, 300) << true;
}

void TestFloatingDocks::comesUpWholeOnTheScreen()
{
    QFETCH(QRect, wanted);
    QFETCH(bool, moves);
    DocksUnderTest window;
    auto *dock = Docking::makeDock(window.dockManager(), "Form");
    dock->setWidget(new QDialog);
    ads::CFloatingDockContainer *floating = window.dockManager()->addDockWidgetFloating(dock);
    floating->setGeometry(wanted);
    floating->show();
    if (moves) {
        QTRY_VERIFY(floating->geometry() != wanted);
    } else {
        QCoreApplication::processEvents();
        QCOMPARE(floating->geometry(), wanted);
    }
    QVERIFY(available().contains(floating->frameGeometry()));
    const QMargins frame(window.geometry().topLeft().x() - window.frameGeometry().left(),
                         window.geometry().top() - window.frameGeometry().top(),
                         window.frameGeometry().right() - window.geometry().right(),
                         window.frameGeometry().bottom() - window.geometry().bottom());
    QCOMPARE(floating->size(), wanted.size().boundedTo(available().marginsRemoved(frame).size()));
}

void TestFloatingDocks::whatIsNoFormKeepsItsSize()
{
    DocksUnderTest window;
    auto *dock = Docking::makeDock(window.dockManager(), "Table");
    dock->setWidget(new QLabel("values"));
    ads::CFloatingDockContainer *floating = window.dockManager()->addDockWidgetFloating(dock);
    const QRect wanted(available().center(), available().size() + QSize(20, 20));
    floating->setGeometry(wanted);
    floating->show();
    QTRY_COMPARE(floating->frameGeometry().topLeft(), available().topLeft());
    QCOMPARE(floating->size(), wanted.size());
}

void TestFloatingDocks::isMovedAsItComesUpAlone()
{
    DocksUnderTest window;
    auto *dock = Docking::makeDock(window.dockManager(), "Form");
    dock->setWidget(new QLabel("input"));
    ads::CFloatingDockContainer *floating = window.dockManager()->addDockWidgetFloating(dock);
    const QRect outside(available().bottomRight(), QSize(200, 100));
    floating->setGeometry(outside);
    floating->show();
    QTRY_VERIFY(available().contains(floating->geometry()));
    floating->move(outside.topLeft());
    QTRY_VERIFY(available().contains(floating->geometry())); // until the library is done with it
    floating->move(outside.topLeft());
    floating->hide();
    floating->show();
    QTest::qWait(0);
    QCOMPARE(floating->pos(), outside.topLeft());
}

void TestFloatingDocks::dialogIsRaisedAboveThem_data()
{
    QTest::addColumn<bool>("modal");
    QTest::newRow("a message") << true;
    QTest::newRow("a dialog that may stay") << false;
}

// They raise themselves when the window loses the focus.
void TestFloatingDocks::dialogIsRaisedAboveThem()
{
    QFETCH(bool, modal);
    const UnwatchedModals closedBelow;
    DocksUnderTest window;
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QDialog dialog(&window);
    dialog.setModal(modal);
    const Raises *raises = new Raises(&dialog);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTRY_VERIFY(raises->count > 0);
}

QTEST_MAIN(TestFloatingDocks)
#include "tst_floatingdocks.moc"

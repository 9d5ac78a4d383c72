#include "barwatch.h"
#include "widgets/progress.h"

#include <QProgressBar>
#include <QTimer>
#include <QtTest>

// The bar that shows how far a work has come.
class TestProgress : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void shortWorkShowsNothing();
    void longWorkMovesTheBar();
    void nothingIsHandledMeanwhile();
    void workWithinAnotherIsPartOfIt();
    void workOutOfSightShowsInItsWindow();
    void hiddenWorkDoesNoHarm();

private:
    QProgressBar *bar() const { return m_over->findChild<QProgressBar *>(); }

    std::unique_ptr<QWidget> m_over;
};

void TestProgress::init()
{
    Progress::delay = 0;
    m_over = std::make_unique<QWidget>();
    m_over->resize(300, 200);
    m_over->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_over.get()));
}

void TestProgress::shortWorkShowsNothing()
{
    Progress::delay = 3600 * 1000;
    Progress progress(m_over.get(), "Loading", 1000);
    progress.advance(1000);
    QVERIFY(!bar());
}

void TestProgress::longWorkMovesTheBar()
{
    const BarWatch bars;
    {
        Progress progress(m_over.get(), "Loading", 1000);
        for (const int done : {200, 700, 1000}) {
            do {
                progress.advance(done);
            } while (bar()->value() != done);
        }
        QVERIFY(m_over->rect().contains(bar()->geometry()));
        QCOMPARE(bar()->text(), "Loading 100%");
    }
    QCOMPARE(bars.values(), (QVector<int>{200, 700, 1000}));
    QVERIFY(!bar());
}

void TestProgress::nothingIsHandledMeanwhile()
{
    bool handled = false;
    QTimer::singleShot(0, this, [&handled] { handled = true; });
    {
        Progress progress(m_over.get(), "Loading", 1000);
        for (const int done : {200, 700}) {
            do {
                progress.advance(done);
            } while (bar()->value() != done);
        }
        QVERIFY(!handled);
    }
    QTRY_VERIFY(handled);
}

void TestProgress::workWithinAnotherIsPartOfIt()
{
    Progress whole(m_over.get(), "Loading", 1000);
    for (int part = 1; part <= 2; ++part) {
        Progress progress(m_over.get(), "Part", 500);
        do {
            progress.advance(500);
        } while (bar()->value() != part * 500);
        QCOMPARE(m_over->findChildren<QProgressBar *>().size(), 1);
    }
    QCOMPARE(bar()->text(), "Loading 100%");
}

void TestProgress::workOutOfSightShowsInItsWindow()
{
    QWidget hidden(m_over.get());
    Progress progress(&hidden, "Loading", 1000);
    progress.advance(200);
    QVERIFY(bar()->isVisible());
    QCOMPARE(bar()->parentWidget(), m_over.get());
}

void TestProgress::hiddenWorkDoesNoHarm()
{
    m_over->hide();
    {
        Progress progress(m_over.get(), "Loading", 1000);
        progress.advance(200);
    }
    QVERIFY(!bar());
}

QTEST_MAIN(TestProgress)
#include "tst_progress.moc"

#pragma once

#include "fakesource.h"
#include "run.h"
#include "trends/figuremodel.h"
#include "trends/figuretable.h"
#include "trends/trendfeed.h"
#include "trends/trendplot.h"
#include "trends/trendwindow.h"

#include <QApplication>
#include <QToolButton>
#include <QtTest>

constexpr qint64 start = 1763800000000; // ms, of the first sample

inline Sample valid(double second, double number)
{
    return {start + qint64(second * 1000), number, SampleState::Valid, QString()};
}

inline Sample words(double second, const QString &text)
{
    return {start + qint64(second * 1000), FakeSource::noNumber, SampleState::Valid, text};
}

inline Sample broken(double second, SampleState why)
{
    return {start + qint64(second * 1000), FakeSource::noNumber, why, QString()};
}

// A window over a source of the test's own, which shows at once what it asks for.
class TrendTest : public QObject
{
protected:
    // With all points that the source has by then.
    void open(bool growing = false)
    {
        TrendFeed::interval = 0;
        TrendWindow::tick = 10;
        source->growing = growing;
        window = new TrendWindow(source.get());
        plot = window->findChild<TrendPlot *>();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        window->addPoints(source->points());
        QApplication::setActiveWindow(window);
        QVERIFY(QTest::qWaitForWindowActive(window));
        redrawn();
    }
    // The last question is asked and answered, and the answer drawn.
    static void redrawn()
    {
        for (int round = 0; round < 3; ++round) {
            QCoreApplication::processEvents();
        }
    }
    void restart()
    {
        delete window;
        source = std::make_unique<FakeSource>();
    }

    QWidget *canvas() const { return plot->canvas(); }
    FigureTable *table() const { return window->findChild<FigureTable *>(); }
    FigureModel *figures() const { return table()->figures(); }
    QToolButton *tool(const char *name) const
    {
        return window->findChild<QToolButton *>(QLatin1String(name));
    }
    QString cell(int row, FigureModel::Column column) const
    {
        return figures()->index(row, column).data().toString();
    }
    // What is on screen, in seconds since the start.
    QVector<double> screen() const
    {
        const TimeRange range = source->requests.last().range;
        return {double(range.from - start) / 1000, double(range.to - start) / 1000};
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(canvas(), Qt::Key(key), modifiers);
        redrawn();
    }

    std::unique_ptr<FakeSource> source = std::make_unique<FakeSource>();
    QPointer<TrendWindow> window;
    TrendPlot *plot = nullptr;
};

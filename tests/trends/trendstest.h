#pragma once

#include "../monitoring/monitoringtest.h"
#include "history/history.h"
#include "messages.h"
#include "modaldialogs.h"
#include "monitoring/monitoringpage.h"
#include "run.h"
#include "trends/trends.h"
#include "trends/trendwindow.h"

#include <QDragEnterEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QToolButton>

#include <memory>

// What the tests of trends and recordings share: a window with live pages of the project "Riverside", whose
// values come from the Box 127.0.0.2, and what is added to it.
class TrendsTest : public MonitoringTest
{
    // No Q_OBJECT: the slots are those of the test.
protected:
    void setUp()
    {
        MonitoringTest::setUp();
        m_messages = std::make_unique<Messages>();
        m_dialogs = std::make_unique<ModalDialogs>();
        m_window = std::make_unique<QMainWindow>();
        m_trends = new Trends(m_view.data(), m_window.get());
        m_window->setCentralWidget(m_tabs.take());
        m_tabs.reset();
        m_window->resize(900, 400);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_view->setBox("Gateway north", "127.0.0.2");
    }
    void tearDown()
    {
        m_window.reset();
        MonitoringTest::tearDown();
        QCOMPARE(m_messages->pending(), 0);
        QCOMPARE(m_dialogs->pending(), 0);
        m_dialogs.reset();
        m_messages.reset();
    }

    QTabWidget *tabs() const { return qobject_cast<QTabWidget *>(m_window->centralWidget()); }
    MonitoringPage *page(const QString &plc = "Meter 1") const
    {
        for (int tab = 0; tab < tabs()->count(); ++tab) {
            if (tabs()->tabText(tab) == plc) {
                return qobject_cast<MonitoringPage *>(tabs()->widget(tab));
            }
        }
        return nullptr;
    }
    // Two reports, the first of which only makes the node.
    MonitoringPage *openPage(const QJsonArray &datas, const QString &plc = "Meter 1")
    {
        receive(datas, plc);
        receive(datas, plc);
        QCoreApplication::processEvents(); // it is laid out
        return page(plc);
    }
    // Each row but with a cell, as a click selects it.
    static void select(const MonitoringPage *page, const QList<int> &rows)
    {
        page->table()->clearSelection();
        for (const int row : rows) {
            page->table()->item(row, 3)->setSelected(true);
        }
    }
    static void press(const QWidget *page, const char *tool)
    {
        auto *button = page->findChild<QToolButton *>(QLatin1String(tool));
        QVERIFY(button && button->isVisible() && button->isEnabled());
        button->click();
    }
    // The texts of the entries of the table's menu, one of which is chosen.
    QStringList chooseInMenu(const MonitoringPage *page, const QString &entry)
    {
        QStringList entries;
        m_dialogs->expect([&entries, entry](QWidget *menu) {
            QAction *chosen = nullptr;
            for (QAction *action : menu->actions()) {
                entries.append(action->text());
                chosen = action->text() == entry ? action : chosen;
            }
            if (!chosen) {
                menu->close();
                return;
            }
            qobject_cast<QMenu *>(menu)->setActiveAction(chosen);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        emit page->table()->customContextMenuRequested(QPoint(5, 5));
        return entries;
    }

    // Whether the window takes what is dragged onto it from there.
    static bool drop(QObject *from, TrendWindow *window)
    {
        static QObject *source;
        source = from;
        const auto real = TrendWindow::sourceOf;
        TrendWindow::sourceOf = [](const QDropEvent &) { return source; };
        QMimeData data;
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(window, &enter);
        QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        drop.ignore();
        QCoreApplication::sendEvent(window, &drop); // where nothing entered, nothing comes of it
        TrendWindow::sourceOf = real;
        return enter.isAccepted() && drop.isAccepted();
    }

    QList<TrendWindow *> windows() const { return m_window->findChildren<TrendWindow *>(); }
    SampleSource *history() const { return m_trends->findChild<History *>(); }
    static QStringList namesOf(const TrendWindow *window)
    {
        QStringList names;
        const QVector<Point> points = window->points();
        for (const Point &point : points) {
            names.append(point.id.name);
        }
        return names;
    }
    // All samples of a point of the source: numbers, or the states of breaks.
    static QStringList samplesOf(const SampleSource *source, const PointId &id)
    {
        QStringList texts;
        const auto cursor = source->cursor(id, {0, std::numeric_limits<qint64>::max()});
        Sample sample;
        while (cursor->next(&sample)) {
            texts.append(sample.state == SampleState::Valid ? QString::number(sample.number)
                                                            : QString("state %1").arg(int(sample.state)));
        }
        return texts;
    }
    static PointId riverside(const QString &name, const QString &plc = "Meter 1")
    {
        return {"127.0.0.2", "Riverside", plc, name};
    }

    std::unique_ptr<QMainWindow> m_window;
    Trends *m_trends = nullptr; // the window's
    std::unique_ptr<Messages> m_messages;
    std::unique_ptr<ModalDialogs> m_dialogs;
};

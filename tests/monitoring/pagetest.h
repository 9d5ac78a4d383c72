#pragma once

#include "modelwatch.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"

#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

#include <memory>

// What the tests of a live page share: a shown page of three points, the last of which is not valid.

inline QVariantMap point(const QString &name, const QString &addr, const QString &valid = "1")
{
    return {{"name", name}, {"addr", addr}, {"dataType", "float"}, {"value", "1.5"}, {"valid", valid}};
}

inline QVariantList feeders()
{
    return {point("Ua", "40001"), point("Ub", "40003"), point("Ia", "50001", "0")};
}

inline const QString reportTime = "2026-01-31 10:00:00";

class PageTest : public QObject
{
    // No Q_OBJECT: the slots are those of the test.
protected:
    void setUp()
    {
        m_now = 5000;
        openPage();
        report(feeders());
        m_page->resize(700, 300);
        m_page->show();
    }
    void tearDown() { m_page.reset(); }

    void openPage()
    {
        m_page = std::make_unique<MonitoringPage>();
        m_page->setClock([this] { return m_now; });
        m_table = m_page->findChild<QTableWidget *>();
        m_filter = m_page->findChild<QLineEdit *>("filter");
        watchModel(m_table->model());
    }
    QStringList shownNames() const
    {
        QStringList names;
        for (int row = 0; row < m_table->rowCount(); ++row) {
            if (!m_table->isRowHidden(row)) {
                names.append(m_table->item(row, MonitoringTable::Name)->text());
            }
        }
        return names;
    }
    // A cell of a row, by default the value of the first one, as it is drawn.
    QImage drawn(int row = 0, int column = MonitoringTable::Value) const
    {
        m_table->clearSelection();
        const QRect cell = m_table->visualItemRect(m_table->item(row, column));
        return m_table->viewport()->grab(cell).toImage();
    }
    QImage drawnValue() const { return drawn(); }
    // The colour behind the value of a row.
    QColor ground(int row = 0) const
    {
        const QImage picture = drawn(row);
        return picture.pixelColor(picture.width() - 4, 3);
    }
    QString line() const { return m_page->findChild<QLabel *>("source")->text(); }
    void filter(const QString &text) const { m_filter->setText(text); }
    void report(const QVariantList &rows) const { MonitoringTable::update(m_table, rows, reportTime); }
    // As it comes in a session with a Box, at m_now.
    void live(const QVariantList &rows, const QString &box = "Gateway north")
    {
        m_page->showReport(rows, reportTime, {"Riverside", box, "127.0.0.2"});
    }
    void clickHeader(int column) const
    {
        const QHeaderView *header = m_table->horizontalHeader();
        const QPoint place(header->sectionViewportPosition(column) + 10, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    }

    std::unique_ptr<MonitoringPage> m_page;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_filter = nullptr;
    qint64 m_now = 0; // ms, the page's clock
};

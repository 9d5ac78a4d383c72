#include "../mainwindow/windowundertest.h"
#include "boxsim/wire.h"
#include "fakebox.h"
#include "processmemory.h"
#include "rehearsals.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QPixmapCache>
#include <QTableWidget>

using Window = WindowUnderTest;

namespace {

constexpr int burst = 20; // reports sent at once

QByteArray report(int number)
{
    QJsonArray datas;
    for (int point = 0; point < 10; ++point) {
        datas.append(QJsonObject{{"name", QString("p%1").arg(point)},
                                 {"addr", QString::number(point)},
                                 {"dataType", "int32"},
                                 {"value", QString::number(number * 100 + point)},
                                 {"valid", "1"}});
    }
    const QJsonObject object{{"projectName", "plant"}, {"plcName", "meters"}, {"datas", datas}};
    const QVector<QByteArray> frames =
        Wire::segments(QJsonDocument(object).toJson(QJsonDocument::Compact), 1024, -1, -1);
    QByteArray bytes;
    for (const QByteArray &frame : frames) {
        bytes += frame;
    }
    return bytes;
}

// Without the pictures that the style keeps for half a minute of what it has drawn.
qint64 memoryInUse()
{
    QPixmapCache::clear();
    return residentSize();
}

} // namespace

// A Box that reports a thousand times a second: the window stays usable, nothing piles up, and what it shows
// in the end is what came last.
class TestFlood : public QObject
{
    Q_OBJECT
private slots:
    void floodOfReportsIsSurvived();
};

void TestFlood::floodOfReportsIsSurvived()
{
    FakeBox box("127.0.30.3");
    QVERIFY(box.isListening());
    Window window;
    const QStandardItem *project = window.addProject("plant");
    window.click(Window::addBox(project, "gate", "127.0.30.3"));
    QTRY_VERIFY(box.isLinked());

    int sent = 0;
    const auto shown = [&window] {
        const auto *page = window.monitoringTabs()->widget(0);
        const auto *table = page ? page->findChild<QTableWidget *>() : nullptr;
        const QTableWidgetItem *cell = table ? table->item(9, 3) : nullptr;
        return cell ? cell->text().toInt() / 100 : 0;
    };
    // Each burst waits for the one before, so that the flood is as fast as the window takes it, and no faster
    // than a thousand a second; clicks go on meanwhile.
    qint64 early = 0;
    QElapsedTimer clock;
    clock.start();
    for (int bursts = 0; bursts < rehearsals(100); ++bursts) {
        QByteArray bytes;
        for (int number = 0; number < burst; ++number) {
            bytes += report(++sent);
        }
        box.send(bytes);
        window.click(project->child(0)); // a folder: nothing opens
        QTRY_COMPARE(shown(), sent);
        if (bursts == 30) {
            early = memoryInUse();
        }
    }
    const qint64 growth = memoryInUse() - early;
    qInfo("%d reports in %lld ms, %lld KiB more than after the first %d", sent,
          static_cast<long long>(clock.elapsed()), static_cast<long long>(growth / 1024), 30 * burst);
    QVERIFY(growth < 8 * 1024 * 1024);
    QCOMPARE(window.monitoringTabs()->count(), 1);
    for (int point = 0; point < 10; ++point) {
        const auto *table = window.monitoringTabs()->widget(0)->findChild<QTableWidget *>();
        QCOMPARE(table->item(point, 3)->text(), QString::number(sent * 100 + point));
    }
}

QTEST_MAIN(TestFlood)
#include "fakebox.h"
#include "tst_flood.moc"

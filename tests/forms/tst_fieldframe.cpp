#include "forms/fieldframe.h"

#include <QGroupBox>
#include <QStandardItem>
#include <QVBoxLayout>
#include <QtTest>

namespace {

constexpr int stationRole = Qt::UserRole + 1;

} // namespace

// A group of fields in a frame that its form may hide.
class TestFieldFrame : public QObject
{
    Q_OBJECT
private slots:
    void hiddenFrameIsErasedAndAShownOneSaved();
    void frameMayBeRefilledOnlyWhileVisible_data();
    void frameMayBeRefilledOnlyWhileVisible();
};

void TestFieldFrame::hiddenFrameIsErasedAndAShownOneSaved()
{
    QWidget form;
    auto *column = new QVBoxLayout(&form);
    FieldFrame frame("Test", Definitions::Kind::Plc);
    QCOMPARE(frame.build(column, "Link")->title(), "Link");
    frame.add<TextField>(stationRole, "station", "Station:")->setText("12");
    form.show();
    QStandardItem item;
    frame.save(&item);
    QCOMPARE(item.data(stationRole), QVariant("12"));
    frame.frame()->hide();
    frame.save(&item);
    QCOMPARE(item.data(stationRole), QVariant());
}

void TestFieldFrame::frameMayBeRefilledOnlyWhileVisible_data()
{
    QTest::addColumn<bool>("always");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QString>("expected");
    QTest::newRow("always, hidden") << true << false << "12";
    QTest::newRow("always, shown") << true << true << "12";
    QTest::newRow("while visible, hidden") << false << false << "";
    QTest::newRow("while visible, shown") << false << true << "12";
}

void TestFieldFrame::frameMayBeRefilledOnlyWhileVisible()
{
    QFETCH(bool, always);
    QFETCH(bool, shown);
    QWidget form;
    auto *column = new QVBoxLayout(&form);
    FieldFrame frame("Test", Definitions::Kind::Plc,
                     always ? FieldFrame::Refill::Always : FieldFrame::Refill::WhenVisible);
    frame.build(column, QString());
    const auto *station = frame.add<TextField>(stationRole, "station", "Station:");
    form.show();
    frame.frame()->setVisible(shown);
    QStandardItem item;
    item.setData("12", stationRole);
    frame.refill(&item);
    QTEST(station->text(), "expected");
}

QTEST_MAIN(TestFieldFrame)
#include "tst_fieldframe.moc"

#include "forms/fieldgroup.h"

#include "model/itemroles.h"

#include <QFormLayout>
#include <QStandardItem>
#include <QtTest>

namespace {

constexpr int stationRole = plcPpiStationNumRole; // "stationNum", of which "2" is the default
constexpr int sumCheckRole = plcMc3cSumCheckRole; // on by default

struct PlcPage {
    PlcPage() { group.setLayout(new QFormLayout(&widget)); }

    QWidget widget;
    FieldGroup group{"Test", Definitions::Kind::Plc};
};

} // namespace

// What a field takes from the row of its role: its name, and what goes into an empty role.
class TestFieldDefaults : public QObject
{
    Q_OBJECT
private slots:
    void fieldGoesByTheRowOfItsKind();
    void defaultGoesIntoAnEmptyRoleOnly();
    void refilledRoleMayStayEmpty();
    void checkTakesItsDefaultWhereTheRoleHoldsNothing_data();
    void checkTakesItsDefaultWhereTheRoleHoldsNothing();
};

void TestFieldDefaults::fieldGoesByTheRowOfItsKind()
{
    QWidget form;
    FieldGroup standards("Test", Definitions::Kind::Standard);
    standards.setLayout(new QFormLayout(&form));
    const auto *port = standards.add<TextField>(standardPortRole, "Port:");
    // A name of its own leaves the default as it is.
    const auto *gap = standards.add<TextField>(standardCommunicationGapRole, "gap", "Gap:");
    // A role of another kind.
    const auto *other = standards.add<TextField>(stationRole, "other", "Other:");
    QCOMPARE(port->widget()->objectName(), "port");
    QCOMPARE(gap->widget()->objectName(), "gap");
    QStandardItem item;
    standards.fill(&item);
    QCOMPARE(port->text(), "502");
    QCOMPARE(gap->text(), "-1");
    QCOMPARE(item.data(stationRole), QVariant());
    QCOMPARE(other->text(), QString());
}

void TestFieldDefaults::defaultGoesIntoAnEmptyRoleOnly()
{
    PlcPage page;
    const auto *station = page.group.add<TextField>(stationRole, "Station:");
    QStandardItem item;
    page.group.fill(&item);
    QCOMPARE(item.data(stationRole), QVariant("2"));
    QCOMPARE(station->text(), "2");

    item.setData("8", stationRole);
    page.group.fill(&item);
    QCOMPARE(item.data(stationRole), QVariant("8"));

    item.setData(QString(), stationRole);
    page.group.refill(&item);
    QCOMPARE(item.data(stationRole), QVariant("2"));
}

void TestFieldDefaults::refilledRoleMayStayEmpty()
{
    PlcPage page;
    auto *station = page.group.add<TextField>(stationRole, "Station:");
    page.group.keepEmptyOnRefill();
    station->setText("8");
    QStandardItem item;
    page.group.refill(&item);
    QCOMPARE(item.data(stationRole), QVariant());
    QCOMPARE(station->text(), QString());
    page.group.fill(&item);
    QCOMPARE(item.data(stationRole), QVariant("2"));
}

void TestFieldDefaults::checkTakesItsDefaultWhereTheRoleHoldsNothing_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("nothing") << QVariant() << QVariant(true);
    QTest::newRow("off") << QVariant(false) << QVariant(false);
    QTest::newRow("off as a text") << QVariant("false") << QVariant("false");
    QTest::newRow("empty text") << QVariant(QString()) << QVariant(QString());
}

void TestFieldDefaults::checkTakesItsDefaultWhereTheRoleHoldsNothing()
{
    QFETCH(QVariant, stored);
    QFETCH(QVariant, expected);
    PlcPage page;
    page.group.add<CheckField>(sumCheckRole, "Sum Check:");
    QStandardItem item;
    item.setData(stored, sumCheckRole);
    page.group.fill(&item);
    QCOMPARE(item.data(sumCheckRole), expected);
}

QTEST_MAIN(TestFieldDefaults)
#include "tst_fielddefaults.moc"

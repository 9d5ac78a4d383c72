#include "definitions/dlt645items.h"
#include "language.h"

#include <QSet>
#include <QtTest>

namespace {

struct Expected {
    const char *label;
    const char *address2007;
    const char *format2007;
    const char *address1997;
    const char *format1997;
};

// clang-format off
const Expected expected[] = {
    {"Positive active power rate of 4 electric energy", "00010400", "XXXXXX.XX", "9014", "XXXXXX.XX"},
    {"Positive active power rate of 3 electric energy", "00010300", "XXXXXX.XX", "9013", "XXXXXX.XX"},
    {"Positive active power rate of 2 electric energy", "00010200", "XXXXXX.XX", "9012", "XXXXXX.XX"},
    {"Positive active power rate of 1 electric energy", "00010100", "XXXXXX.XX", "9011", "XXXXXX.XX"},
    {"Combination active power rate 4 electricity", "00000400", "XXXXXX.XX", nullptr, nullptr},
    {"Combination active power rate 3 electricity", "00000300", "XXXXXX.XX", nullptr, nullptr},
    {"Combination active power rate 2 electricity", "00000200", "XXXXXX.XX", nullptr, nullptr},
    {"Combination active power rate 1 electricity", "00000100", "XXXXXX.XX", nullptr, nullptr},
    {"Combined reactive power 2 total electrical energy", "00040000", "XXXXXX.XX", nullptr, nullptr},
    {"Combined reactive power 1 total electrical energy", "00030000", "XXXXXX.XX", nullptr, nullptr},
    {"A-phase positive active energy", "00150000", "XXXXXX.XX", nullptr, nullptr},
    {"B-phase positive active energy", "00290000", "XXXXXX.XX", nullptr, nullptr},
    {"C-phase positive active energy", "003D0000", "XXXXXX.XX", nullptr, nullptr},
    {"Reactive constant of electric meter", "0400040A", "XXXXXX", "C031", "NNNNNN"},
    {"Active constant of electric meter", "04000409", "XXXXXX", "C030", "NNNNNN"},
    {"Combined active total electrical energy", "00000000", "XXXXXX.XX", nullptr, nullptr},
    {"Reverse active total electrical energy", "00020000", "XXXXXX.XX", "9020", "XXXXXX.XX "},
    {"Total reactive energy in the first quadrant", "00050000", "XXXXXX.XX", "9130", "XXXXXX.XX"},
    {"Total reactive energy in the second quadrant", "00060000", "XXXXXX.XX", "9150", "XXXXXX.XX"},
    {"Total reactive energy in the third quadrant", "00070000", "XXXXXX.XX", "9160", "XXXXXX.XX"},
    {"Total reactive energy in the fourth quadrant", "00080000", "XXXXXX.XX", "9140", "XXXXXX.XX"},
    {"Positive active total electrical energy", "00010000", "XXXXXX.XX", "9010", "XXXXXX.XX"},
    {"Instantaneous total apparent power", "02050000", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous A-phase apparent power", "02050100", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous B-phase apparent power", "02050200", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous C-phase apparent power", "02050300", "XX.XXXX", nullptr, nullptr},
    {"Instantaneous total reactive power", "02040000", "XX.XXXX", "B640", "XX.XX"},
    {"Instantaneous A-phase reactive power", "02040100", "XX.XXXX", "B641", "XX.XX"},
    {"Instantaneous B-phase reactive power", "02040200", "XX.XXXX", "B642", "XX.XX"},
    {"Instantaneous C-phase reactive power", "02040300", "XX.XXXX", "B643", "XX.XX"},
    {"Instantaneous total active power", "02030000", "XX.XXXX", "B630", "XX.XXXX"},
    {"Instantaneous A-phase active power", "02030100", "XX.XXXX", "B631", "XX.XXXX"},
    {"Instantaneous B-phase active power", "02030200", "XX.XXXX", "B632", "XX.XXXX"},
    {"Instantaneous C-phase active power", "02030300", "XX.XXXX", "B633", "XX.XXXX"},
    {"Total power factor", "02060000", "X.XXX", "B650", "X.XXX"},
    {"A-phase power factor", "02060100", "X.XXX", "B651", "X.XXX"},
    {"B-phase power factor", "02060200", "X.XXX", "B652", "X.XXX"},
    {"C-phase power factor", "02060300", "X.XXX", "B653", "X.XXX"},
    {"A-phase current", "02020100", "XXX.XXX", "B621", "XX.XX"},
    {"B-phase current", "02020200", "XXX.XXX", "B622", "XX.XX"},
    {"C-phase current", "02020300", "XXX.XXX", "B623", "XX.XX"},
    {"A-phase voltage", "02010100", "XXX.X", "B611", "XXX"},
    {"B-phase voltage", "02010200", "XXX.X", "B612", "XXX"},
    {"C-phase voltage", "02010300", "XXX.X", "B613", "XXX"},
};
// clang-format on

} // namespace

class TestDlt645Items : public QObject
{
    Q_OBJECT
private slots:
    void tableHoldsEveryItemInOrder_data();
    void tableHoldsEveryItemInOrder();
    void identifiersAreUnique();
    void editionsListTheirItemsInTableOrder();
    void unknownIdentifierHasNoLabel_data();
    void unknownIdentifierHasNoLabel();
    void versionFollowsFromItsText_data();
    void versionFollowsFromItsText();
    void labelIsTranslatedInTheLanguageInForce();
    void labelsFindEveryItemOfTheirEdition();
    void labelsKeepTheLanguageOfTheirMaking();
    void labelOfAnotherLanguageIsNotFound();
    void firstOfEqualLabelsWins();
    void labelsOfAddressesOfBothEditions();
};

void TestDlt645Items::tableHoldsEveryItemInOrder_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < int(std::size(expected)); ++row) {
        QTest::newRow(expected[row].label) << row;
    }
}

void TestDlt645Items::tableHoldsEveryItemInOrder()
{
    QFETCH(int, row);
    QCOMPARE(int(Dlt645::items().size()), 44);
    QCOMPARE(int(std::size(expected)), 44);
    const Dlt645::Item &item = Dlt645::items().at(size_t(row));
    QCOMPARE(item.label, expected[row].label);
    QCOMPARE(item.code2007.address, expected[row].address2007);
    QCOMPARE(item.code2007.format, expected[row].format2007);
    QCOMPARE(item.code1997.address, expected[row].address1997);
    QCOMPARE(item.code1997.format, expected[row].format1997);
    QCOMPARE(item.code(Dlt645::Version2007).address, expected[row].address2007);
    QCOMPARE(item.code(Dlt645::Version1997).address, expected[row].address1997);
}

void TestDlt645Items::identifiersAreUnique()
{
    QSet<QString> addresses;
    QSet<QString> labels;
    for (const Dlt645::Item &item : Dlt645::items()) {
        labels.insert(QLatin1String(item.label));
        for (const char *address : {item.code2007.address, item.code1997.address}) {
            if (address) {
                addresses.insert(QLatin1String(address));
            }
        }
    }
    QCOMPARE(labels.size(), 44);
    QCOMPARE(addresses.size(), 44 + 30);
}

void TestDlt645Items::editionsListTheirItemsInTableOrder()
{
    QVector<const Dlt645::Item *> all;
    QVector<const Dlt645::Item *> older;
    for (const Dlt645::Item &item : Dlt645::items()) {
        all.append(&item);
        if (item.code1997.address) {
            older.append(&item);
        }
    }
    QCOMPARE(Dlt645::itemsOf(Dlt645::Version2007), all);
    QCOMPARE(Dlt645::itemsOf(Dlt645::Version1997), older);
    QCOMPARE(older.size(), 30);
}

void TestDlt645Items::unknownIdentifierHasNoLabel_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("empty") << QString();
    QTest::newRow("unknown") << "12345678";
    QTest::newRow("small letters") << "003d0000";
    QTest::newRow("blank behind") << "9010 ";
    QTest::newRow("a format") << "XXXXXX.XX";
}

void TestDlt645Items::unknownIdentifierHasNoLabel()
{
    QFETCH(QString, address);
    QCOMPARE(Dlt645::Labels().ofAddress(address), QString());
}

void TestDlt645Items::versionFollowsFromItsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("version");
    QTest::newRow("2007") << "DLT645_2007" << 1;
    QTest::newRow("1997") << "DLT645_1997" << 2;
    QTest::newRow("empty") << QString() << 2;
    QTest::newRow("other case") << "dlt645_2007" << 2;
}

void TestDlt645Items::versionFollowsFromItsText()
{
    QFETCH(QString, text);
    QFETCH(int, version);
    QCOMPARE(int(Dlt645::versionOf(text)), version);
    QCOMPARE(Dlt645::versionText(Dlt645::Version2007), "DLT645_2007");
    QCOMPARE(Dlt645::versionText(Dlt645::Version1997), "DLT645_1997");
}

void TestDlt645Items::labelIsTranslatedInTheLanguageInForce()
{
    const Dlt645::Item &item = Dlt645::items().front();
    const QString source = "Positive active power rate of 4 electric energy";
    QCOMPARE(Dlt645::label(item), source);
    {
        const Language language("zh ");
        QCOMPARE(Dlt645::label(item), QLatin1String("zh ") + source);
    }
    QCOMPARE(Dlt645::label(item), source);
}

void TestDlt645Items::labelsFindEveryItemOfTheirEdition()
{
    const Language language("zh ");
    const Dlt645::Labels labels;
    for (const Dlt645::Item &item : Dlt645::items()) {
        const QString label = Dlt645::label(item);
        QCOMPARE(labels.find(label, Dlt645::Version2007), &item);
        QCOMPARE(labels.find(label, Dlt645::Version1997), item.code1997.address ? &item : nullptr);
    }
    QCOMPARE(labels.find(QString(), Dlt645::Version2007), nullptr);
}

void TestDlt645Items::labelsKeepTheLanguageOfTheirMaking()
{
    const Dlt645::Labels english;
    const Language language("zh ");
    QVERIFY(english.find("A-phase voltage", Dlt645::Version2007));
    QCOMPARE(english.ofAddress("B611"), "A-phase voltage");
}

void TestDlt645Items::labelOfAnotherLanguageIsNotFound()
{
    const Language language("zh ");
    const Dlt645::Labels labels;
    QCOMPARE(labels.find("A-phase voltage", Dlt645::Version2007), nullptr);
    QVERIFY(labels.find("zh A-phase voltage", Dlt645::Version2007));
}

// The item in front has no identifier of 1997, so that there the one behind it is the first.
void TestDlt645Items::firstOfEqualLabelsWins()
{
    const QString same = "same";
    const Language language(
        QString(),
        {{"B-phase positive active energy", same}, {"B-phase current", same}, {"B-phase voltage", same}});
    const Dlt645::Labels labels;
    QCOMPARE(labels.find(same, Dlt645::Version2007)->code2007.address, "00290000");
    QCOMPARE(labels.find(same, Dlt645::Version1997)->code1997.address, "B622");
}

void TestDlt645Items::labelsOfAddressesOfBothEditions()
{
    const Language language("zh ");
    const Dlt645::Labels labels;
    for (const Dlt645::Item &item : Dlt645::items()) {
        QCOMPARE(labels.ofAddress(QLatin1String(item.code2007.address)), Dlt645::label(item));
        if (item.code1997.address) {
            QCOMPARE(labels.ofAddress(QLatin1String(item.code1997.address)), Dlt645::label(item));
        }
    }
}

QTEST_GUILESS_MAIN(TestDlt645Items)
#include "tst_dlt645items.moc"

#include "definitions/dlt645items.h"
#include "language.h"
#include "meteritems.h"

#include <QSet>
#include <QtTest>

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
    for (int row = 0; row < int(std::size(meterItems)); ++row) {
        QTest::newRow(meterItems[row].label) << row;
    }
}

void TestDlt645Items::tableHoldsEveryItemInOrder()
{
    QFETCH(int, row);
    QCOMPARE(int(Dlt645::items().size()), 44);
    QCOMPARE(int(std::size(meterItems)), 44);
    const Dlt645::Item &item = Dlt645::items().at(size_t(row));
    QCOMPARE(item.label, meterItems[row].label);
    QCOMPARE(item.code2007.address, meterItems[row].address2007);
    QCOMPARE(item.code2007.format, meterItems[row].format2007);
    QCOMPARE(item.code1997.address, meterItems[row].address1997);
    QCOMPARE(item.code1997.format, meterItems[row].format1997);
    QCOMPARE(item.code(Dlt645::Version2007).address, meterItems[row].address2007);
    QCOMPARE(item.code(Dlt645::Version1997).address, meterItems[row].address1997);
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

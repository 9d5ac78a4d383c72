#include "history/valuetable.h"
#include "samples.h"

#include <QBuffer>
#include <QLocale>
#include <QtTest>

#include <ctime>

using namespace Samples;

using Column = QPair<QString, QVector<Sample>>; // name and samples
using Columns = QVector<Column>;

Q_DECLARE_METATYPE(Sample)

namespace {

class ListCursor : public SampleCursor
{
public:
    explicit ListCursor(const QVector<Sample> &samples, const QString &why = {})
        : m_samples(samples)
        , m_why(why)
    {
    }

    bool next(Sample *sample) override
    {
        if (m_next == m_samples.size()) {
            return false;
        }
        *sample = m_samples.at(m_next++);
        return true;
    }
    QString error() const override { return m_next == m_samples.size() ? m_why : QString(); }

private:
    QVector<Sample> m_samples;
    QString m_why;
    int m_next = 0;
};

// Takes so many bytes.
class SmallDevice : public QBuffer
{
public:
    explicit SmallDevice(qint64 room)
        : m_room(room)
    {
        open(WriteOnly);
    }
    qint64 greatestPiece() const { return m_greatest; }

protected:
    qint64 writeData(const char *bytes, qint64 count) override
    {
        m_greatest = qMax(m_greatest, count);
        if (size() + count > m_room) {
            return -1;
        }
        return QBuffer::writeData(bytes, count);
    }

private:
    qint64 m_room;
    qint64 m_greatest = 0;
};

std::vector<ValueTable::Column> tableOf(const Columns &columns)
{
    std::vector<ValueTable::Column> table;
    for (const Column &column : columns) {
        table.push_back({{"b", "p", "s", column.first}, std::make_unique<ListCursor>(column.second)});
    }
    return table;
}

QByteArray written(const Columns &columns)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QString error = "unchanged";
    return ValueTable::write(&buffer, tableOf(columns), &error) && error.isEmpty() ? buffer.data()
                                                                                   : QByteArray();
}

qint64 ms(const char *utc)
{
    return QDateTime::fromString(QString::fromLatin1(utc), Qt::ISODateWithMs).toMSecsSinceEpoch();
}

QVector<Sample> countUp(int count)
{
    QVector<Sample> samples;
    for (int i = 0; i < count; ++i) {
        samples.append(number(i * 1000, i / 3.0));
    }
    return samples;
}

} // namespace

// The values of points as CSV.
class TestValueTable : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void writes_data();
    void writes();
    void writesNumbers_data();
    void writesNumbers();
    void mergesByTime();
    void tellsWhoseColumnsTheyAre();
    void writesPieceByPiece();
    void tellsThatItCouldNotWrite_data();
    void tellsThatItCouldNotWrite();
    void tellsThatItCouldNotRead();
};

void TestValueTable::initTestCase()
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
}

void TestValueTable::writes_data()
{
    QTest::addColumn<Columns>("columns");
    QTest::addColumn<QByteArray>("lines"); // behind the mark of UTF-8
    const auto row = [](const char *name, const Columns &columns, const QByteArray &lines) {
        QTest::newRow(name) << columns << lines;
    };
    const qint64 noon = ms("2026-01-31T11:45:00.250Z");
    const QByteArray noonText = "2026-01-31T12:45:00.250+01:00";
    row("no point", {}, "Time\r\n");
    row("no sample", {{"Ua", {}}}, "Time,b / p / s / Ua\r\n");
    row("a number", {{"Ua", {number(noon, 2.5)}}}, "Time,b / p / s / Ua\r\n" + noonText + ",2.5\r\n");
    row("a number and its digits",
        {{"I", {{noon, 9007199254740992, SampleState::Valid, " 9007199254740993"}}}},
        "Time,b / p / s / I\r\n" + noonText + ",9007199254740993\r\n");
    row("a text", {{"Mode", {text(noon, "on")}}}, "Time,b / p / s / Mode\r\n" + noonText + ",on\r\n");
    row("an empty text", {{"Mode", {text(noon, "")}}}, "Time,b / p / s / Mode\r\n" + noonText + ",\r\n");
    row("quoted", {{"a,\"b\"", {text(noon, "1,5\r\n\"x\"")}}},
        "Time,\"b / p / s / a,\"\"b\"\"\"\r\n" + noonText + ",\"1,5\r\n\"\"x\"\"\"\r\n");
    row("UTF-8", {{"温度", {text(noon, "高 °C")}}}, "Time,b / p / s / 温度\r\n" + noonText + ",高 °C\r\n");
    row("breaks",
        {{"Ua",
          {broken(noon, SampleState::NotValid, "7"), broken(noon + 1, SampleState::NoNumber, "nan"),
           broken(noon + 2, SampleState::NoReport), broken(noon + 3, SampleState::Ended),
           broken(noon + 4, SampleState::Dropped)}}},
        "Time,b / p / s / Ua\r\n"
        "2026-01-31T12:45:00.250+01:00,not valid\r\n"
        "2026-01-31T12:45:00.251+01:00,no number\r\n"
        "2026-01-31T12:45:00.252+01:00,no report\r\n"
        "2026-01-31T12:45:00.253+01:00,ended\r\n"
        "2026-01-31T12:45:00.254+01:00,dropped\r\n");
    row("an hour that comes twice",
        {{"Ua", {number(ms("2026-10-25T00:30:00.000Z"), 1), number(ms("2026-10-25T01:30:00.000Z"), 2)}}},
        "Time,b / p / s / Ua\r\n2026-10-25T02:30:00.000+02:00,1\r\n2026-10-25T02:30:00.000+01:00,2\r\n");
}

void TestValueTable::writes()
{
    QFETCH(Columns, columns);
    QFETCH(QByteArray, lines);
    QCOMPARE(written(columns), "\xef\xbb\xbf" + lines);
}

void TestValueTable::writesNumbers_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("cell");
    const auto row = [](const char *cell, double number) {
        QTest::newRow(cell) << number << QByteArray(cell);
    };
    row("0", 0);
    row("-12", -12);
    row("0.1", 0.1);
    row("0.30000000000000004", 0.1 + 0.2);
    row("100000", 100000);
    row("123456789012345", 123456789012345);
    row("0.00001", 0.00001);
    row("1e-06", 0.000001);
    row("1e+15", 1e15);
    row("1.7976931348623157e+308", std::numeric_limits<double>::max());
    row("5e-324", std::numeric_limits<double>::denorm_min());
}

void TestValueTable::writesNumbers()
{
    QFETCH(double, number);
    QFETCH(QByteArray, cell);
    QLocale::setDefault(QLocale("de_DE")); // changes nothing
    const QByteArray line = written({{"Ua", {Samples::number(0, number)}}}).split('\n').at(1);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(line, "1970-01-01T01:00:00.000+01:00," + cell + '\r');
    QCOMPARE(cell.toDouble(), number);
}

void TestValueTable::mergesByTime()
{
    const Columns columns{{"A", {number(0, 1), number(2000, 2), number(3000, 3)}},
                          {"B", {}},
                          {"C", {number(1000, 10), number(2000, 20)}},
                          {"D", {text(2000, "x"), broken(4000, SampleState::Ended)}}};
    QCOMPARE(written(columns),
             QByteArray("\xef\xbb\xbfTime,b / p / s / A,b / p / s / B,b / p / s / C,b / p / s / D\r\n"
                        "1970-01-01T01:00:00.000+01:00,1,,,\r\n"
                        "1970-01-01T01:00:01.000+01:00,,,10,\r\n"
                        "1970-01-01T01:00:02.000+01:00,2,,20,x\r\n"
                        "1970-01-01T01:00:03.000+01:00,3,,,\r\n"
                        "1970-01-01T01:00:04.000+01:00,,,,ended\r\n"));
}

void TestValueTable::tellsWhoseColumnsTheyAre()
{
    std::vector<ValueTable::Column> columns;
    for (const PointId &id : {PointId{"b", "p", "Line 1", "Ua"}, PointId{"c", "p", "Line 1", "Ua"}}) {
        columns.push_back({id, std::make_unique<ListCursor>(QVector<Sample>())});
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(ValueTable::write(&buffer, std::move(columns)));
    QCOMPARE(buffer.data(), QByteArray("\xef\xbb\xbfTime,b / p / Line 1 / Ua,c / p / Line 1 / Ua\r\n"));
}

void TestValueTable::writesPieceByPiece()
{
    const Columns columns{{"A", countUp(10000)}, {"B", countUp(10000)}};
    SmallDevice device(1 << 30);
    QVERIFY(ValueTable::write(&device, tableOf(columns)));
    QCOMPARE(device.data(), written(columns));
    QCOMPARE(device.data().count('\n'), 10001);
    QVERIFY(device.greatestPiece() < 128 * 1024);
    QVERIFY(device.data().size() > 512 * 1024);
}

void TestValueTable::tellsThatItCouldNotWrite_data()
{
    QTest::addColumn<qint64>("room");
    QTest::newRow("at once") << qint64(0);
    QTest::newRow("in the middle") << qint64(100000);
    QTest::newRow("at the end") << qint64(written({{"A", countUp(10000)}}).size() - 1);
}

void TestValueTable::tellsThatItCouldNotWrite()
{
    QFETCH(qint64, room);
    SmallDevice device(room);
    QString error;
    QVERIFY(!ValueTable::write(&device, tableOf({{"A", countUp(10000)}}), &error));
    QCOMPARE(error, QString());
}

void TestValueTable::tellsThatItCouldNotRead()
{
    std::vector<ValueTable::Column> columns = tableOf({{"A", countUp(3)}});
    columns.push_back({{"b", "p", "s", "B"}, std::make_unique<ListCursor>(countUp(2), "The file is gone.")});
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QString error;
    QVERIFY(!ValueTable::write(&buffer, std::move(columns), &error));
    QCOMPARE(error, QString("The file is gone."));
}

QTEST_GUILESS_MAIN(TestValueTable)
#include "tst_valuetable.moc"

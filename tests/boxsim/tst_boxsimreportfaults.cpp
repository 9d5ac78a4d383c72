#include "boxsimtest.h"

#include <QElapsedTimer>

// The faults of the simulated Box that concern its reports.
class TestBoxSimReportFaults : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimReportFaults()
        : BoxSimTest("127.0.12.8")
    {
    }

private slots:
    void cleanup() { stop(); }

    void segmentFieldsAreSpoiled_data();
    void segmentFieldsAreSpoiled();
    void reportsInterleave();
    void reportsFlood();
    void pointsAreNotValid();

private:
    // Two Standards, S and T, whose reports of about 2200 bytes take three segments each.
    static QByteArray project();
};

QByteArray TestBoxSimReportFaults::project()
{
    QByteArray points;
    for (int i = 0; i < 30; ++i) {
        points +=
            (i == 0 ? "{\"name\":\"p" : ",{\"name\":\"p") + QByteArray::number(i) + "\",\"addr\":\"1\"}";
    }
    const QByteArray standard = "\",\"datas\":[" + points + "]}";
    return "{\"name\":\"P\",\"standards\":[{\"name\":\"S" + standard + ",{\"name\":\"T" + standard + "]}";
}

void TestBoxSimReportFaults::segmentFieldsAreSpoiled_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QVector<int>>("totalsOff"); // of the segments of one report
    QTest::addColumn<QVector<int>>("numbers");
    using Row = QVector<int>;
    QTest::newRow("none") << QString() << Row{0, 0, 0} << Row{1, 2, 3};
    QTest::newRow("all totals") << "wrong-total" << Row{1, 1, 1} << Row{1, 2, 3};
    QTest::newRow("second total") << "wrong-total=2" << Row{0, 1, 0} << Row{1, 2, 3};
    QTest::newRow("all numbers") << "wrong-number" << Row{0, 0, 0} << Row{2, 3, 4};
    QTest::newRow("last number") << "wrong-number=3" << Row{0, 0, 0} << Row{1, 2, 4};
    QTest::newRow("long segments") << "segment-size=2000" << Row{0, 0} << Row{1, 2};
}

void TestBoxSimReportFaults::segmentFieldsAreSpoiled()
{
    QFETCH(QString, fault);
    QFETCH(QVector<int>, totalsOff);
    QFETCH(QVector<int>, numbers);
    RUN(startSession(withProject(project(), fault)));
    m_box->reportNow();
    QVector<int> totals;
    QVector<int> found;
    int size = 0;
    for (int i = 0; i < numbers.size(); ++i) {
        const QByteArray frame = m_tool->takeFrame();
        const auto byte = [&frame](int at) { return static_cast<quint8>(frame.at(at)); };
        QCOMPARE(frame.left(4).toHex(), QByteArray("12340600"));
        QCOMPARE(byte(11) + 256 * byte(12), frame.size() - 19);
        QCOMPARE(byte(9) + byte(10) + byte(15) + byte(16), 0);
        totals.append(byte(7) + 256 * byte(8));
        found.append(byte(13) + 256 * byte(14));
        size += frame.size() - 19;
    }
    for (int &total : totals) {
        total -= size;
    }
    QCOMPARE(totals, totalsOff);
    QCOMPARE(found, numbers);
}

void TestBoxSimReportFaults::reportsInterleave()
{
    RUN(startSession(withProject(project(), "interleave")));
    const auto numbers = [this] {
        QByteArray found;
        for (int i = 0; i < 6; ++i) {
            found.append(static_cast<char>('0' + m_tool->takeFrame().at(13)));
        }
        return found;
    };
    m_box->reportNow();
    QCOMPARE(numbers(), QByteArray("112233"));
    m_box->setFaults(BoxSimFaults());
    m_box->reportNow();
    QCOMPARE(numbers(), QByteArray("123123"));
}

void TestBoxSimReportFaults::reportsFlood()
{
    RUN(start(withProject(project(), "flood=500")));
    QElapsedTimer clock;
    clock.start();
    m_tool->send(Raw::heartbeat);
    QCOMPARE(m_tool->takeFrame().size(), 38);
    QTRY_VERIFY(Raw::reports(m_tool->bytes()).size() >= 100);
    QVERIFY(clock.elapsed() >= 100); // paced, not as fast as it goes
    m_box->setFaults(BoxSimFaults());
    QSignalSpy sent(m_box.get(), &BoxSim::frameSent);
    m_tool->send(Raw::heartbeat);
    QVERIFY(sent.wait());
    QCOMPARE(sent.size(), 1);
}

void TestBoxSimReportFaults::pointsAreNotValid()
{
    RUN(startSession(withProject(R"({"name":"P","standards":[{"name":"S","datas":[)"
                                 R"({"name":"a"},{"name":"b"},{"name":"c"},{"name":"d"}]}]})",
                                 "invalid=3")));
    m_box->reportNow();
    QByteArray valid;
    const QByteArray text = m_tool->takeFrame();
    for (int at = text.indexOf("\"valid\":\""); at >= 0; at = text.indexOf("\"valid\":\"", at + 1)) {
        valid.append(text.at(at + 9));
    }
    QCOMPARE(valid, QByteArray("1101"));
}

QTEST_GUILESS_MAIN(TestBoxSimReportFaults)
#include "tst_boxsimreportfaults.moc"

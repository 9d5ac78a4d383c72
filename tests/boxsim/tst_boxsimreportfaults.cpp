#include "boxsim/boxsim.h"
#include "rawtool.h"

#include <QElapsedTimer>
#include <QSignalSpy>

// The faults of the simulated Box that concern its reports.
class tst_BoxSimReportFaults : public QObject
{
    Q_OBJECT

private slots:
    void segmentFieldsAreSpoiled_data();
    void segmentFieldsAreSpoiled();
    void reportsInterleave();
    void reportsFlood();
    void pointsAreNotValid();

private:
    static BoxSimOptions options(const QString &fault) { return Raw::quietBox(address(), fault); }
    static QHostAddress address() { return QHostAddress("127.0.12.8"); }
    // Two Standards, S and T, whose reports of about 2200 bytes take three segments each.
    static QByteArray project();
};

QByteArray tst_BoxSimReportFaults::project()
{
    QByteArray points;
    for (int i = 0; i < 30; ++i) {
        points +=
            (i == 0 ? "{\"name\":\"p" : ",{\"name\":\"p") + QByteArray::number(i) + "\",\"addr\":\"1\"}";
    }
    const QByteArray standard = "\",\"datas\":[" + points + "]}";
    return "{\"name\":\"P\",\"standards\":[{\"name\":\"S" + standard + ",{\"name\":\"T" + standard + "]}";
}

void tst_BoxSimReportFaults::segmentFieldsAreSpoiled_data()
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

void tst_BoxSimReportFaults::segmentFieldsAreSpoiled()
{
    QFETCH(QString, fault);
    QFETCH(QVector<int>, totalsOff);
    QFETCH(QVector<int>, numbers);
    BoxSimOptions own = options(fault);
    own.project = project();
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::heartbeat());
    QCOMPARE(tool.takeFrame().size(), 38);
    box.reportNow();
    QVector<int> totals;
    QVector<int> found;
    int size = 0;
    for (int i = 0; i < numbers.size(); ++i) {
        const QByteArray frame = tool.takeFrame();
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

void tst_BoxSimReportFaults::reportsInterleave()
{
    BoxSimOptions own = options("interleave");
    own.project = project();
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::heartbeat());
    QCOMPARE(tool.takeFrame().size(), 38);
    const auto numbers = [&tool] {
        QByteArray found;
        for (int i = 0; i < 6; ++i) {
            found.append(static_cast<char>('0' + tool.takeFrame().at(13)));
        }
        return found;
    };
    box.reportNow();
    QCOMPARE(numbers(), QByteArray("112233"));
    box.setFaults(BoxSimFaults());
    box.reportNow();
    QCOMPARE(numbers(), QByteArray("123123"));
}

void tst_BoxSimReportFaults::reportsFlood()
{
    BoxSimOptions own = options("flood=500");
    own.project = project();
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    QElapsedTimer clock;
    clock.start();
    tool.send(Raw::heartbeat());
    QCOMPARE(tool.takeFrame().size(), 38);
    QTRY_VERIFY(Raw::reports(tool.bytes()).size() >= 100);
    QVERIFY(clock.elapsed() >= 100); // paced, not as fast as it goes
    box.setFaults(BoxSimFaults());
    QSignalSpy sent(&box, &BoxSim::frameSent);
    tool.send(Raw::heartbeat());
    QVERIFY(sent.wait());
    QCOMPARE(sent.size(), 1);
}

void tst_BoxSimReportFaults::pointsAreNotValid()
{
    BoxSimOptions own = options("invalid=3");
    own.project =
        "{\"name\":\"P\",\"standards\":[{\"name\":\"S\",\"datas\":[{\"name\":\"a\"},{\"name\":\"b\"},"
        "{\"name\":\"c\"},{\"name\":\"d\"}]}]}";
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::heartbeat());
    QCOMPARE(tool.takeFrame().size(), 38);
    box.reportNow();
    QByteArray valid;
    const QByteArray text = tool.takeFrame();
    for (int at = text.indexOf("\"valid\":\""); at >= 0; at = text.indexOf("\"valid\":\"", at + 1)) {
        valid.append(text.at(at + 9));
    }
    QCOMPARE(valid, QByteArray("1101"));
}

QTEST_GUILESS_MAIN(tst_BoxSimReportFaults)
#include "tst_boxsimreportfaults.moc"

#include "widgets/timedtext.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QtTest>

class TestTimedText : public QObject
{
    Q_OBJECT
private slots:
    void eachLineHasTheTimeItCame();
    void timesAreNoPartOfTheText();
    void timesAreDrawnBesideTheLines();
    void clearedTextHasNoTimes();
};

namespace {

bool isTime(const QString &text)
{
    static const QRegularExpression time("^\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$");
    return time.match(text).hasMatch();
}

} // namespace

void TestTimedText::eachLineHasTheTimeItCame()
{
    TimedText text;
    QCOMPARE(text.timeOf(0), QString());
    text.appendPlainText("first");
    const QString first = text.timeOf(0);
    QVERIFY2(isTime(first), qPrintable(first));
    QTRY_VERIFY(QDateTime::currentDateTime().toString("MM-dd HH:mm:ss") != first); // a second has passed
    text.appendPlainText("second\nthird");
    QCOMPARE(text.timeOf(0), first);
    QVERIFY(isTime(text.timeOf(1)));
    QVERIFY(text.timeOf(1) != first);
    QVERIFY(isTime(text.timeOf(2)));
}

void TestTimedText::timesAreNoPartOfTheText()
{
    TimedText text;
    text.appendPlainText("first");
    text.appendPlainText("second");
    QCOMPARE(text.toPlainText(), "first\nsecond");
}

void TestTimedText::timesAreDrawnBesideTheLines()
{
    TimedText text;
    text.resize(400, 100);
    text.show();
    QWidget *margin = text.findChild<QWidget *>("times");
    QCOMPARE(margin->width(), 0);
    text.appendPlainText("first");
    QVERIFY(margin->width() > 0);
    const QImage one = margin->grab().toImage();
    QVERIFY(text.viewport()->x() >= margin->width());
    text.appendPlainText("second");
    QVERIFY(margin->grab().toImage() != one);
}

void TestTimedText::clearedTextHasNoTimes()
{
    TimedText text;
    text.appendPlainText("first");
    text.clear();
    QCOMPARE(text.timeOf(0), QString());
    text.appendPlainText("again");
    QVERIFY(isTime(text.timeOf(0)));
}

QTEST_MAIN(TestTimedText)
#include "tst_timedtext.moc"

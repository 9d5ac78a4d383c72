#include "widgets/timedtext.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QMenu>
#include <QRegularExpression>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest>

class TestTimedText : public QObject
{
    Q_OBJECT
private slots:
    void eachLineHasTheTimeItCame();
    void timesAreNoPartOfTheText();
    void timesAreDrawnBesideTheLines();
    void clearedTextHasNoTimes();
    void wheelScrollsBesideTheLines();
    void menuOpensBesideTheLines();
    void timesStandOnTheBaseLine();
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

void TestTimedText::wheelScrollsBesideTheLines()
{
    TimedText text;
    text.resize(400, 100);
    text.show();
    for (int line = 0; line < 100; ++line) {
        text.appendPlainText(QString::number(line));
    }
    QWidget *margin = text.findChild<QWidget *>("times");
    const int last = text.verticalScrollBar()->value();
    QVERIFY(last > 0);
    const QPoint place(2, 2);
    QWheelEvent wheel(place, margin->mapToGlobal(place), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(margin, &wheel);
    QVERIFY(text.verticalScrollBar()->value() < last);
}

void TestTimedText::menuOpensBesideTheLines()
{
    TimedText text;
    text.setReadOnly(true);
    text.resize(400, 100);
    text.show();
    text.appendPlainText("first");
    QWidget *margin = text.findChild<QWidget *>("times");
    const QPoint place(2, 2);
    QContextMenuEvent click(QContextMenuEvent::Mouse, place, margin->mapToGlobal(place));
    QCoreApplication::sendEvent(margin, &click);
    QTRY_VERIFY(QApplication::activePopupWidget());
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QStringList entries;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *action : actions) {
        entries.append(action->objectName());
    }
    QVERIFY2(entries.contains("edit-copy"), qPrintable(entries.join(' ')));
    menu->close();
}

static int lowestInk(const QImage &image)
{
    for (int y = image.height() - 1; y >= 0; --y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 100) {
                return y;
            }
        }
    }
    return -1;
}

// A glyph of another font makes its line higher. Here it is a blank, so that digits alone leave ink.
void TestTimedText::timesStandOnTheBaseLine()
{
    TimedText text;
    text.setPalette(QPalette(Qt::white));
    text.setTextInteractionFlags(Qt::NoTextInteraction); // no cursor
    text.resize(400, 150);
    text.show();
    text.appendHtml("88<span style='font-size:40pt'>&nbsp;</span>");
    const int written = lowestInk(text.viewport()->grab().toImage());
    const int time = lowestInk(text.findChild<QWidget *>("times")->grab().toImage());
    QVERIFY(written > 30);
    QCOMPARE(time, written);
}

QTEST_MAIN(TestTimedText)
#include "tst_timedtext.moc"

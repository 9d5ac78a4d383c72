#include "widgets/quietline.h"

#include <QImage>
#include <QTextDocument>
#include <QtTest>

// The small line that names what a form shows or says what it has done.
class TestQuietLine : public QObject
{
    Q_OBJECT
private slots:
    void asksForNoWidth();
    void saysInItsToolTipWhatHasNoRoom();
    void namesFromFilesAreNoMarkUp();
    void highlightExchangesTheColoursForAMoment_data();
    void highlightExchangesTheColoursForAMoment();
};

void TestQuietLine::asksForNoWidth()
{
    QuietLine line(nullptr);
    line.setText(QString(300, QLatin1Char('W')));
    QCOMPARE(line.minimumSizeHint().width(), 0);
    QVERIFY(line.minimumSizeHint().height() >= line.fontMetrics().height());
    QVERIFY(line.fontInfo().pointSizeF() < QWidget().fontInfo().pointSizeF());
}

void TestQuietLine::saysInItsToolTipWhatHasNoRoom()
{
    QuietLine line(nullptr);
    line.setText("Riverside substation");
    QCOMPARE(line.toolTip(), "Riverside substation");
    QCOMPARE(line.accessibleName(), "Riverside substation");
    // A narrow line draws less than all of it, and not just the beginning.
    line.resize(60, 20);
    const QImage narrow = line.grab().toImage();
    line.setText("Riverside subst");
    QVERIFY(line.grab().toImage() != narrow);
}

void TestQuietLine::namesFromFilesAreNoMarkUp()
{
    QuietLine line(nullptr);
    line.setText("a <b>bold</b> name");
    QVERIFY(Qt::mightBeRichText(line.toolTip()));
    QVERIFY2(line.toolTip().contains("&lt;b&gt;bold"), qPrintable(line.toolTip()));
}

void TestQuietLine::highlightExchangesTheColoursForAMoment_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("light") << QColor(Qt::black) << QColor(0xef, 0xef, 0xef);
    QTest::newRow("dark") << QColor(0xf0, 0xf0, 0xf0) << QColor(0x2d, 0x2d, 0x2d);
}

void TestQuietLine::highlightExchangesTheColoursForAMoment()
{
    QFETCH(QColor, text);
    QFETCH(QColor, ground);
    QuietLine line(nullptr);
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, ground);
    line.setPalette(palette);
    line.setText("Riverside substation");
    line.resize(line.sizeHint());
    QCOMPARE(line.grab().toImage().pixelColor(0, 0), ground);
    QuietLine::moment = 50;
    line.highlight();
    const QImage highlighted = line.grab().toImage();
    QCOMPARE(highlighted.pixelColor(0, 0), text);
    bool hasText = false;
    for (int x = 0; x < highlighted.width(); ++x) {
        hasText = hasText || highlighted.pixelColor(x, highlighted.height() / 2) == ground;
    }
    QVERIFY(hasText);
    QTRY_VERIFY(!line.isHighlighted());
    QCOMPARE(line.grab().toImage().pixelColor(0, 0), ground);
}

QTEST_MAIN(TestQuietLine)
#include "tst_quietline.moc"

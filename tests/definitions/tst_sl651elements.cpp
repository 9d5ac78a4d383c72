#include "definitions/sl651elements.h"

#include <QRegularExpression>
#include <QSet>
#include <QtTest>

class TestSl651Elements : public QObject
{
    Q_OBJECT
private slots:
    void codesAreTwoHexadecimalDigitsEach();
    void observationTimeComesFirst();
    void codesLeftOut();
};

namespace {

QStringList codes()
{
    QStringList found;
    for (const Sl651::Element &element : Sl651::elements()) {
        found.append(QString::fromLatin1(element.code));
    }
    return found;
}

} // namespace

void TestSl651Elements::codesAreTwoHexadecimalDigitsEach()
{
    static const QRegularExpression pattern("^[0-9A-F]{2}$");
    QSet<QString> met;
    for (const QString &code : codes()) {
        QVERIFY2(pattern.match(code).hasMatch(), qPrintable(code));
        QVERIFY2(!met.contains(code), qPrintable(code));
        met.insert(code);
    }
    QCOMPARE(met.size(), 117);
}

// It stands for a code that is not known.
void TestSl651Elements::observationTimeComesFirst()
{
    QCOMPARE(codes().first(), "F0");
}

void TestSl651Elements::codesLeftOut()
{
    QVERIFY(!codes().contains("05"));
    QVERIFY(!codes().contains("45"));
}

QTEST_GUILESS_MAIN(TestSl651Elements)
#include "tst_sl651elements.moc"

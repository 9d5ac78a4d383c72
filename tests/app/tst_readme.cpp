#include "catalogue.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

// The page that a newcomer opens first, in its two languages: what is mended in one is forgotten in the
// other.
class TestReadme : public QObject
{
    Q_OBJECT
private slots:
    void bothHaveTheSameStructure_data();
    void bothHaveTheSameStructure();
    void bothHaveTheSameCode();
    void chineseQuotesTheProgram();
    void englishQuotesTheProgram();
};

namespace {

QString textOf(const QString &name)
{
    QFile file(QString(SOURCE_ROOT "/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList matches(const QString &text, const QString &pattern)
{
    const QRegularExpression expression(
        pattern, QRegularExpression::MultilineOption | QRegularExpression::UseUnicodePropertiesOption);
    QStringList found;
    for (auto match = expression.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured(1));
    }
    return found;
}

// Code, or a text of the program in Chinese.
QStringList inBackticks(const QString &text, bool code)
{
    static const QRegularExpression ascii("^[ -~]*$");
    QStringList found;
    for (const QString &quoted : matches(text, "`([^`\n]*)`")) {
        if (ascii.match(quoted).hasMatch() == code) {
            found.append(quoted);
        }
    }
    return found;
}

// Which of the quoted texts no Chinese text of the program is.
QStringList unknown(const QStringList &quoted)
{
    QSet<QString> texts;
    for (const Translation &entry : readCatalogue(QString(SOURCE_ROOT "/src/resources/chinese.ts"))) {
        texts += QSet<QString>(entry.texts.cbegin(), entry.texts.cend());
    }
    QStringList wrong;
    for (const QString &text : quoted) {
        if (!texts.contains(text)) {
            wrong.append(text);
        }
    }
    return wrong;
}

} // namespace

void TestReadme::bothHaveTheSameStructure_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::newRow("headings") << "^(#+) ";
    QTest::newRow("commands") << "^    (.*)$";
    QTest::newRow("steps") << "^(\\d+)\\. ";
    QTest::newRow("links") << "\\]\\(((?!README|docs/manual)[^)]*)\\)";
}

void TestReadme::bothHaveTheSameStructure()
{
    QFETCH(QString, pattern);
    const QStringList english = matches(textOf("README.md"), pattern);
    QVERIFY(!english.isEmpty());
    QCOMPARE(matches(textOf("README.zh.md"), pattern), english);
}

void TestReadme::bothHaveTheSameCode()
{
    const QStringList english = inBackticks(textOf("README.md"), true);
    QVERIFY(!english.isEmpty());
    QCOMPARE(inBackticks(textOf("README.zh.md"), true), english);
}

void TestReadme::chineseQuotesTheProgram()
{
    const QStringList quoted = inBackticks(textOf("README.zh.md"), false);
    QVERIFY(quoted.size() > 10);
    QCOMPARE(unknown(quoted), QStringList());
}

// The Chinese text stands behind the English one: "*Connect* 连接".
void TestReadme::englishQuotesTheProgram()
{
    const QStringList quoted = matches(textOf("README.md"), "\\* ([A-Za-z]*[\\x{4e00}-\\x{9fff}][\\w]*)");
    QVERIFY(quoted.size() > 10);
    QCOMPARE(unknown(quoted), QStringList());
}

QTEST_GUILESS_MAIN(TestReadme)

#include "tst_readme.moc"

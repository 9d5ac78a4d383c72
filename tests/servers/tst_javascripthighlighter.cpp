#include "servers/javascripthighlighter.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

class TestJavaScriptHighlighter : public QObject
{
    Q_OBJECT
private slots:
    void coloursEachCharacter_data();
    void coloursEachCharacter();
    void setsTheForegroundOnly();
    void followsTheTyping();
};

namespace {

// A letter a character: k for a keyword's colour, n for a number's, c for a comment's, a dot for none.
QString coloursOf(const QTextBlock &block)
{
    QString colours(block.text().size(), QLatin1Char('.'));
    const auto formats = block.layout()->formats();
    for (const QTextLayout::FormatRange &range : formats) {
        const QBrush brush = range.format.foreground();
        const QChar letter = brush == Qt::blue ? QLatin1Char('k')
            : brush == Qt::darkMagenta         ? QLatin1Char('n')
            : brush == Qt::darkGreen           ? QLatin1Char('c')
                                               : QLatin1Char('?');
        colours.replace(range.start, range.length, QString(range.length, letter));
    }
    return colours;
}

QString coloursOf(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        lines.append(coloursOf(block));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void TestJavaScriptHighlighter::coloursEachCharacter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("colours");
    for (const char *word : {"var", "function", "return", "if", "else", "for", "while", "do", "switch",
                             "case", "break", "continue"}) {
        const QString keyword = QString::fromLatin1(word);
        QTest::newRow(word) << "x " + keyword + QLatin1Char(';')
                            << ".." + QString(keyword.size(), QLatin1Char('k')) + QLatin1Char('.');
    }
    const struct {
        const char *name;
        const char *text;
        const char *colours;
    } rows[] = {
        {"empty", "", ""},
        {"words that are none", "let new this true", "................."},
        {"keyword in a word", "variable iff redo", "................."},
        {"capitals", "Var IF", "......"},
        {"underscore joins", "_if if_", "......."},
        {"number", "x = 1024;", "....nnnn."},
        {"fraction is two numbers", "3.14", "n.nn"},
        {"digits in a word", "x1 2y", "....."},
        {"negative", "-7", ".n"},
        {"comment", "a // b", "..cccc"},
        {"keyword and number in a comment", "if //if 7", "kk.cccccc"},
        {"slashes in a string", "u = \"http://h\" + if", "..........ccccccccc"},
        {"block comment", "/* if 1 */", "...kk.n..."},
        {"string", "\"if 1\"", ".kk.n."},
        {"comment ends with its line", "// if\nif 1", "ccccc\nkk.n"},
        {"statement", "for (var i = 0; i < 10; i++) { return i; } // 10",
         "kkk..kkk.....n......nn.........kkkkkk......ccccc"},
    };
    for (const auto &row : rows) {
        QTest::newRow(row.name) << QString::fromLatin1(row.text) << QString::fromLatin1(row.colours);
    }
}

void TestJavaScriptHighlighter::coloursEachCharacter()
{
    QFETCH(QString, text);
    QFETCH(QString, colours);
    QTextDocument document;
    auto *highlighter = new JavaScriptHighlighter(&document);
    QCOMPARE(highlighter->document(), &document);
    document.setPlainText(text);
    highlighter->rehighlight();
    QCOMPARE(coloursOf(document), colours);
}

void TestJavaScriptHighlighter::setsTheForegroundOnly()
{
    QTextDocument document;
    auto *highlighter = new JavaScriptHighlighter(&document);
    document.setPlainText("if 1 //");
    highlighter->rehighlight();
    const auto formats = document.begin().layout()->formats();
    QCOMPARE(formats.size(), 3);
    for (const QTextLayout::FormatRange &range : formats) {
        QCOMPARE(range.format.properties().keys(), QList<int>({QTextFormat::ForegroundBrush}));
    }
}

void TestJavaScriptHighlighter::followsTheTyping()
{
    QTextDocument document;
    QVERIFY(document.documentLayout()); // as a shown one has, which tells of changes
    new JavaScriptHighlighter(&document);
    QTextCursor cursor(&document);
    cursor.insertText("retur");
    QTRY_COMPARE(coloursOf(document), ".....");
    cursor.insertText("n");
    QTRY_COMPARE(coloursOf(document), "kkkkkk");
}

QTEST_MAIN(TestJavaScriptHighlighter)
#include "tst_javascripthighlighter.moc"

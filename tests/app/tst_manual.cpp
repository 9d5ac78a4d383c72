#include "catalogue.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QVector>

#include <algorithm>

// The two manuals against the catalogue: an engineer looks a text up as the program shows it.
class TestManual : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void englishQuotesTheProgram();
    void chineseQuotesTheProgram();
    void everyMessageIsExplained();
    void bothExplainTheSameMessages();
    void eachMessageStandsBesideItsOther();
    void bothHaveTheSameCommandsAndLogLines();
    void contentsNameEveryChapter();

private:
    QMap<QString, QSet<QString>> m_chineseOf; // by source text, blanks made one
    QMap<QString, QSet<QString>> m_contextsOf;
};

namespace {

// Quotes that are no texts of the catalogue: names of nodes and entries, which no language changes, answers
// of Qt's own boxes, a text that the program never translates, and the word that tells how quotes are marked.
const QSet<QString> fixedTexts = {
    "Standard", "Service", "Box", "Data", "Modbus", "DLT645", "Yes", "No", "Name cannot be empty.", "italics",
};

// No menu and no tab leads to the forms that show these.
bool isOutOfReach(const QString &context)
{
    static const QStringList contexts = {
        "CImageViewer",  "CStatusDialogClass", "PLC",         "PointForm", "Server", "StandardTableForm",
        "standardOPCUA", "standardCustomPoll", "standardDIO",
    };
    return std::any_of(contexts.cbegin(), contexts.cend(),
                       [&context](const QString &start) { return context.startsWith(start); });
}

// Messages of forms and pages out of reach, in the contexts of others.
bool isDormant(const QString &text)
{
    static const QRegularExpression pattern(
        "^(PLC|Server|A PLC|A server|Wifi|WIFI|Lte|LTE|Editor %1|%1 contains|This is an editor|"
        "Only positive|The spatial index|The magnitude|The collection|The write formula|"
        "Length must be a positive integer\\.|Parameter table not|No tab|"
        "Invalid input in row %1: only (numbers|integers|letters, digits, underscores, and))");
    return pattern.match(text).hasMatch();
}

// What a box, the status of a link or the "Message" dock says, as against the name of a field or an action.
bool isMessage(const QString &text)
{
    static const QRegularExpression pattern(
        "[^.]\\.$|[!?]$|Error code:|^Connection status|^Unable|^CSV file has|Set as default|null$|"
        "^Selected |failed|Failed to|^JSON data|as a whole$|^The clipboard holds|^Nothing was");
    return pattern.match(text).hasMatch();
}

// A manual, and how it marks what it quotes of the program: the English one by italics, the Chinese one as
// code.
struct Manual {
    const char *file;
    const char *quote; // pattern
};
constexpr Manual english{"manual.md", "(?<![*\\\\])\\*(?!\\*)((?:[^*\\\\]|\\\\.)+)\\*"};
constexpr Manual chinese{"manual.zh.md", "`([^`\n]+)`"};

QString wholeTextOf(const Manual &manual)
{
    QFile file(QString(SOURCE_ROOT "/docs/") + QString::fromLatin1(manual.file));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Without examples of code, in which an asterisk multiplies.
QString textOf(const Manual &manual)
{
    static const QRegularExpression code("\n {4}[^\n]*");
    return wholeTextOf(manual).remove(code).remove(QLatin1String("**"));
}

QStringList quotes(const Manual &manual, const QString &text)
{
    const QRegularExpression pattern(QString::fromLatin1(manual.quote));
    QStringList found;
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured(1).simplified().remove(QLatin1Char('\\')));
    }
    return found;
}

// Commands and names of files and of types stand in code as well.
bool isProgramText(const QString &quoted)
{
    static const QRegularExpression code("^[ -~]+$|^<");
    return !quoted.contains(code);
}

struct MessageRow {
    QStringList quoted; // the first cell
    QStringList other;  // the second: the same messages in the other language
};

// Of the tables of messages.
QVector<MessageRow> messageTable(const Manual &manual)
{
    const QStringList chapters = textOf(manual).split("\n## ");
    QVector<MessageRow> rows;
    const QStringList lines = chapters.value(chapters.size() - 2).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QStringList quoted = quotes(manual, line.section(" | ", 0, 0));
        if (line.startsWith(QLatin1Char('|')) && !quoted.isEmpty()) {
            rows.append({quoted, line.section(" | ", 1, 1).split("<br>")});
        }
    }
    return rows;
}

QVector<QStringList> messageRows(const Manual &manual)
{
    QVector<QStringList> rows;
    for (const MessageRow &row : messageTable(manual)) {
        rows.append(row.quoted);
    }
    return rows;
}

// Examples of code, and the cells in which the log of boxsim is quoted.
QStringList commandsAndLogLines(const Manual &manual)
{
    static const QRegularExpression pattern(
        "(?<=\n\n)( {4}[^! ].*\n)+|^\\| (`[ -_a-~]*[a-z ]{8}[ -_a-~]*`(<br>)?)+ \\|",
        QRegularExpression::MultilineOption);
    QStringList found;
    const QString text = wholeTextOf(manual);
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured());
    }
    return found;
}

// What a pattern captures, in the manual's order.
QStringList captured(const Manual &manual, const char *pattern)
{
    const QRegularExpression expression(QString::fromLatin1(pattern), QRegularExpression::MultilineOption);
    QStringList found;
    const QString text = wholeTextOf(manual);
    for (auto match = expression.globalMatch(text); match.hasNext();) {
        found.append(match.next().captured(1));
    }
    return found;
}

QString joined(const QStringList &texts)
{
    return QLatin1Char('\n') + texts.join(QLatin1Char('\n'));
}

} // namespace

void TestManual::initTestCase()
{
    const Catalogue catalogue = readCatalogue(QString(SOURCE_ROOT "/src/resources/chinese.ts"));
    for (auto it = catalogue.cbegin(); it != catalogue.cend(); ++it) {
        const QString source = it.key().at(1).simplified();
        m_chineseOf[source].insert(it->texts.first().simplified());
        m_contextsOf[source].insert(it.key().at(0));
    }
    QVERIFY(!m_chineseOf.isEmpty());
}

void TestManual::englishQuotesTheProgram()
{
    const QStringList quoted = quotes(english, textOf(english));
    QVERIFY(quoted.size() > 100);
    QStringList wrong;
    for (const QString &text : quoted) {
        if (!m_chineseOf.contains(text) && !fixedTexts.contains(text)) {
            wrong.append(text);
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(joined(wrong)));
}

void TestManual::chineseQuotesTheProgram()
{
    QSet<QString> known{"这样的文字"}; // which tells how quotes are marked
    for (const QSet<QString> &texts : qAsConst(m_chineseOf)) {
        known += texts;
    }
    const QStringList quoted = quotes(chinese, textOf(chinese));
    QVERIFY(quoted.size() > 100);
    QStringList wrong;
    for (const QString &text : quoted) {
        if (isProgramText(text) && !known.contains(text)) {
            wrong.append(text);
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(joined(wrong)));
}

void TestManual::everyMessageIsExplained()
{
    QSet<QString> explained;
    const auto rows = messageRows(english);
    for (const QStringList &row : rows) {
        explained += QSet<QString>(row.cbegin(), row.cend());
    }
    QStringList missing;
    for (auto it = m_contextsOf.cbegin(); it != m_contextsOf.cend(); ++it) {
        const bool reached = std::any_of(it->cbegin(), it->cend(),
                                         [](const QString &context) { return !isOutOfReach(context); });
        if (reached && isMessage(it.key()) && !isDormant(it.key()) && !explained.contains(it.key())) {
            missing.append(it.key());
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(joined(missing)));
}

void TestManual::bothExplainTheSameMessages()
{
    const auto sources = messageRows(english);
    const auto translations = messageRows(chinese);
    QVERIFY(sources.size() > 30);
    QCOMPARE(translations.size(), sources.size());
    for (int row = 0; row < sources.size(); ++row) {
        QCOMPARE(translations.at(row).size(), sources.at(row).size());
        for (int index = 0; index < sources.at(row).size(); ++index) {
            const QString source = sources.at(row).at(index);
            const QString shown = translations.at(row).at(index);
            QVERIFY2(m_chineseOf.value(source, {source}).contains(shown), qPrintable(source + shown));
        }
    }
}

// A colleague on the phone reads the message in the other language.
void TestManual::eachMessageStandsBesideItsOther()
{
    const auto sources = messageTable(english);
    const auto translations = messageTable(chinese);
    QCOMPARE(translations.size(), sources.size());
    for (int row = 0; row < sources.size(); ++row) {
        QCOMPARE(sources.at(row).other, translations.at(row).quoted);
        QCOMPARE(translations.at(row).other, sources.at(row).quoted);
    }
}

void TestManual::bothHaveTheSameCommandsAndLogLines()
{
    const QStringList commands = commandsAndLogLines(english);
    QVERIFY(commands.size() > 20);
    QCOMPARE(commandsAndLogLines(chinese), commands);
}

void TestManual::contentsNameEveryChapter()
{
    for (const Manual &manual : {english, chinese}) {
        const QStringList contents = captured(manual, "^- \\[(.*)\\]\\(#.*\\)$");
        QCOMPARE(contents, captured(manual, "^## (.*)$"));
    }
}

QTEST_GUILESS_MAIN(TestManual)
#include "tst_manual.moc"

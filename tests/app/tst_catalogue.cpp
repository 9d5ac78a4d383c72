#include "catalogue.h"
#include "definitions/dlt645items.h"
#include "files.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTranslator>

namespace {

// Sources that the document compares with: their translation is empty, so that they show as they are.
const QStringList emptyOnPurpose = {"None", "Password"};
// Sources that a Box compares with: their translation is the source itself.
const QStringList sameOnPurpose = {"Enable", "Disabled"};

QString shown(const Key &key)
{
    return key.join(QLatin1String(" | "));
}

// The parts of a text that a translation has to keep: placeholders and the number of mnemonics.
QStringList fixedParts(const QString &text)
{
    static const QRegularExpression pattern("%L?[1-9n]|&(?=[^&\\s])");
    QStringList parts;
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        parts.append(match.next().captured());
    }
    parts.sort();
    return parts;
}

QStringList keysOnlyIn(const Catalogue &one, const Catalogue &other)
{
    QStringList keys;
    for (auto it = one.cbegin(); it != one.cend(); ++it) {
        if (!other.contains(it.key())) {
            keys.append(shown(it.key()));
        }
    }
    return keys;
}

// The contexts of the forms that have the texts of a shared one, by the table that the build goes by.
QMap<QString, QStringList> formsOfSharedContexts()
{
    QMap<QString, QStringList> forms;
    const QString script = QString::fromUtf8(Files::contents(SOURCE_ROOT "/src/resources/sharetexts.cmake"));
    const QString table = script.section("set(rows", 1).section(QLatin1Char(')'), 0, 0);
    const QStringList rows = table.split(QLatin1Char('"'));
    for (int place = 1; place < rows.size(); place += 2) {
        QStringList names = rows.at(place).simplified().split(QLatin1Char(' '));
        const QString shared = names.takeFirst();
        forms.insert(shared, names);
    }
    return forms;
}

} // namespace

class TestCatalogue : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void everyTextOfTheSourcesHasAContext();
    void chineseHoldsExactlyTheTextsOfTheSources();
    void englishHoldsExactlyTheTextsOfTheSources();
    void everyTextHasAChineseOne();
    void comparedTextsKeepTheirSource();
    void chineseKeepsPlaceholdersAndMnemonics();
    void fixedTexts_data();
    void fixedTexts();
    void wordsOfTheTreeStayLatin();
    void aSourceHasOneTranslation();
    void statesEndAlike();
    void tabTitlesDiffer();
    void meterItemsDiffer();
    void englishShowsTheSources();
    void bothCataloguesLoad_data();
    void bothCataloguesLoad();
    void emptyTranslationShowsItsSource();
    void theProgramHasEveryTranslation();

private:
    QString chineseOf(const char *context, const char *source) const
    {
        const Key key{QString::fromLatin1(context), QString::fromLatin1(source), QString()};
        return m_chinese.value(key).texts.value(0);
    }

    QByteArray m_complaints; // of lupdate
    Catalogue m_sources;
    Catalogue m_chinese;
    Catalogue m_english;
};

void TestCatalogue::initTestCase()
{
    QProcess lupdate;
    lupdate.start(
        QString(LUPDATE),
        {"-silent", "-locations", "none", "-recursive", QString(SOURCE_ROOT "/src"), "-ts", "sources.ts"});
    QVERIFY2(lupdate.waitForFinished(120000), qPrintable(lupdate.errorString()));
    m_complaints = lupdate.readAllStandardError();
    QVERIFY2(lupdate.exitCode() == 0, m_complaints.constData());

    m_sources = readCatalogue("sources.ts");
    m_chinese = readCatalogue(QString(SOURCE_ROOT "/src/resources/chinese.ts"));
    m_english = readCatalogue(QString(SOURCE_ROOT "/src/resources/english.ts"));
    QVERIFY(!m_sources.isEmpty());
}

// A class that calls tr() without Q_OBJECT asks in its base's context, where no translation stands.
void TestCatalogue::everyTextOfTheSourcesHasAContext()
{
    QCOMPARE(QString::fromLocal8Bit(m_complaints), QString());
}

void TestCatalogue::chineseHoldsExactlyTheTextsOfTheSources()
{
    const QStringList missing = keysOnlyIn(m_sources, m_chinese);
    QVERIFY2(missing.isEmpty(), qPrintable("Missing:\n" + missing.join(QLatin1Char('\n'))));
    const QStringList unused = keysOnlyIn(m_chinese, m_sources);
    QVERIFY2(unused.isEmpty(), qPrintable("Unused:\n" + unused.join(QLatin1Char('\n'))));
}

void TestCatalogue::englishHoldsExactlyTheTextsOfTheSources()
{
    const QStringList missing = keysOnlyIn(m_sources, m_english);
    QVERIFY2(missing.isEmpty(), qPrintable("Missing:\n" + missing.join(QLatin1Char('\n'))));
    const QStringList unused = keysOnlyIn(m_english, m_sources);
    QVERIFY2(unused.isEmpty(), qPrintable("Unused:\n" + unused.join(QLatin1Char('\n'))));
}

void TestCatalogue::everyTextHasAChineseOne()
{
    QStringList untranslated;
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        const bool empty = it->texts.contains(QString());
        if (!it->finished || (empty && !emptyOnPurpose.contains(it.key().at(1)))) {
            untranslated.append(shown(it.key()));
        }
    }
    QVERIFY2(untranslated.isEmpty(), qPrintable(untranslated.join(QLatin1Char('\n'))));
}

void TestCatalogue::comparedTextsKeepTheirSource()
{
    QSet<QString> met;
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        const QString &source = it.key().at(1);
        if (emptyOnPurpose.contains(source)) {
            QVERIFY2(it->texts == QStringList(QString()), qPrintable(shown(it.key())));
            met.insert(source);
        } else if (sameOnPurpose.contains(source)) {
            QVERIFY2(it->texts == QStringList(source), qPrintable(shown(it.key())));
            met.insert(source);
        }
    }
    for (const QString &source : emptyOnPurpose + sameOnPurpose) {
        QVERIFY2(met.contains(source), qPrintable(source));
    }
}

void TestCatalogue::chineseKeepsPlaceholdersAndMnemonics()
{
    QStringList different;
    Catalogue chinese = readCatalogue(QString(SOURCE_ROOT "/src/resources/toolkit_chinese.ts"));
    QVERIFY(!chinese.isEmpty());
    chinese.insert(m_chinese);
    for (auto it = chinese.cbegin(); it != chinese.cend(); ++it) {
        for (const QString &text : it->texts) {
            if (!text.isEmpty() && fixedParts(text) != fixedParts(it.key().at(1))) {
                different.append(shown(it.key()) + QLatin1String(" -> ") + text);
            }
        }
    }
    QVERIFY2(different.isEmpty(), qPrintable(different.join(QLatin1Char('\n'))));
}

void TestCatalogue::fixedTexts_data()
{
    QTest::addColumn<QString>("chinese");
    const struct {
        const char *source;
        QString chinese;
    } rows[] = {
        {"New Project", "新建项目"},
        {"Load Project", "加载项目"},
        {"Save All Project", "保存全部项目"},
        {"Save Project", "保存项目"},
        {"Close Project", "关闭项目"},
        {"Edit Project", "编辑项目"},
        {"Add Standard", "添加Standard"},
        {"Add Box", "添加Box"},
        {"Search Box", "搜索设备"},
        {"Edit Box", "编辑Box"},
        {"Edit Standard", "编辑Standard"},
        {"Edit Service", "编辑Service"},
        {"Delete", "删除"},
        {"Delete All", "删除全部"},
        {"Effective", "有效"},
        {"Invalid", "无效"},
        {"Unknown", "未知"},
        {"Timed", "定时上报"},
        {"Change", "变化上报"},
        {"Change amplitude", "变化幅度上报"},
        {"anonymous", "匿名"},
        {"Username and password verification", "用户名、密码验证"},
    };
    for (const auto &row : rows) {
        QTest::newRow(row.source) << row.chinese;
    }
}

// Terms that read the same wherever they stand; a row whose source has gone is to go, too.
void TestCatalogue::fixedTexts()
{
    QFETCH(QString, chinese);
    const QString source = QString::fromLatin1(QTest::currentDataTag());
    bool isUsed = false;
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        if (it.key().at(1) == source) {
            QCOMPARE(it->texts, QStringList(chinese));
            isUsed = true;
        }
    }
    QVERIFY2(isUsed, "no source has this text");
}

// The engineer finds them so in the tree, in documents and on the Box.
void TestCatalogue::wordsOfTheTreeStayLatin()
{
    const QSet<QString> otherwise = {
        "Search Box", // says what the search finds
        // The server of these is the Box.
        "Connection status: Not connected to server.",
        "Connection Status:Not connected to server.",
        "Connection Status:Failed to connect to server for program update.",
        "Not connected to server.",
        // The server of this is a database.
        "%1 can't be written: the server is out of space.",
    };
    QStringList lost;
    static const QRegularExpression word("\\b(?:Box|Standard|Service|Server|PLC)\\b",
                                         QRegularExpression::CaseInsensitiveOption);
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        const QString &source = it.key().at(1);
        auto words = word.globalMatch(otherwise.contains(source) ? QString() : source);
        while (words.hasNext()) {
            const QString found = words.next().captured();
            if (!it->texts.first().contains(found, Qt::CaseInsensitive)) {
                lost.append(shown(it.key()));
            }
        }
    }
    QCOMPARE(lost.join(QLatin1Char('\n')), QString());
}

void TestCatalogue::aSourceHasOneTranslation()
{
    const QSet<QString> several = {"Add Tab"}; // a tab is a slave or a meter
    QMap<QString, QSet<QString>> translations;
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        translations[it.key().at(1)].insert(it->texts.first());
    }
    QStringList different;
    for (auto it = translations.cbegin(); it != translations.cend(); ++it) {
        if (it->size() > 1 && !several.contains(it.key())) {
            different.append(it.key() + QLatin1String(": ") + it->values().join(QLatin1String(", ")));
        }
    }
    QCOMPARE(different.join(QLatin1Char('\n')), QString());
}

// A state is no sentence and has no mark at its end; nothing is shouted.
void TestCatalogue::statesEndAlike()
{
    static const QRegularExpression marked("^(连接|绑定)状态：.*[。.…！]$|[！!].*[！!]");
    QStringList found;
    int states = 0;
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        states += it->texts.first().contains("状态：") ? 1 : 0;
        if (it->texts.first().contains(marked)) {
            found.append(it->texts.first());
        }
    }
    QVERIFY(states > 8);
    QCOMPARE(found.join(QLatin1Char('\n')), QString());
}

// An open tab is found by its title: two kinds with one title would share a tab.
void TestCatalogue::tabTitlesDiffer()
{
    QSet<QString> titles;
    for (const char *source :
         {"Edit Box", "Edit PLC", "Edit Server", "Edit Standard", "Edit Service", "Edit Project"}) {
        const QString title = chineseOf("CMainWindow", source);
        QVERIFY2(!title.isEmpty(), source);
        QVERIFY2(!titles.contains(title), source);
        titles.insert(title);
    }
}

// The document finds the code of an item by the label that the form shows.
void TestCatalogue::meterItemsDiffer()
{
    QSet<QString> labels;
    for (const Dlt645::Item &item : Dlt645::items()) {
        const QString label = chineseOf("CMainWindow", item.label);
        QVERIFY2(!label.isEmpty(), item.label);
        QVERIFY2(!labels.contains(label), item.label);
        labels.insert(label);
    }
    QCOMPARE(labels.size(), 44);
}

void TestCatalogue::englishShowsTheSources()
{
    for (auto it = m_english.cbegin(); it != m_english.cend(); ++it) {
        for (const QString &text : it->texts) {
            QVERIFY2(text.isEmpty() || text == it.key().at(1), qPrintable(shown(it.key())));
        }
    }
}

void TestCatalogue::bothCataloguesLoad_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("chinese") << ":/adsdemo/chinese.qm";
    QTest::newRow("english") << ":/adsdemo/english.qm";
}

void TestCatalogue::bothCataloguesLoad()
{
    QFETCH(QString, file);
    QTranslator translator;
    QVERIFY(translator.load(file));
}

void TestCatalogue::emptyTranslationShowsItsSource()
{
    QTranslator translator;
    QVERIFY(translator.load(":/adsdemo/chinese.qm"));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        if (emptyOnPurpose.contains(it.key().at(1))) {
            const QByteArray context = it.key().at(0).toUtf8();
            const QByteArray source = it.key().at(1).toUtf8();
            QCOMPARE(QCoreApplication::translate(context.constData(), source.constData()), it.key().at(1));
        }
    }
}

// What stands in a shared context reaches each form that the table names, but for a text of the form's own.
void TestCatalogue::theProgramHasEveryTranslation()
{
    QTranslator translator;
    QVERIFY(translator.load(":/adsdemo/chinese.qm"));
    const QMap<QString, QStringList> sharing = formsOfSharedContexts();
    QCOMPARE(sharing.size(), 8);
    QStringList lost;
    for (auto it = m_chinese.cbegin(); it != m_chinese.cend(); ++it) {
        const Key &key = it.key();
        for (const QString &context : sharing.value(key.at(0), {key.at(0)})) {
            const Key own{context, key.at(1), key.at(2)};
            const QString expected = m_chinese.value(own, *it).texts.first();
            if (translator.translate(context.toUtf8(), key.at(1).toUtf8()) != expected) {
                lost.append(shown(own));
            }
        }
    }
    QCOMPARE(lost, QStringList());
}

QTEST_GUILESS_MAIN(TestCatalogue)
#include "tst_catalogue.moc"

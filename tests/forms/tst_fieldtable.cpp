#include "forms/fieldtable.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStandardItem>
#include <QTranslator>
#include <QtTest>

namespace {

enum TestRole {
    stationRole = Qt::UserRole + 1,
    parityRole,
    enabledRole,
    switchRole,
    secretRole,
};

QVector<Field> testFields()
{
    return {
        {"name", "Name:", FieldKind::Text, Qt::DisplayRole},
        {"station", "Station:", FieldKind::Text, stationRole, FieldCheck::Integer, {}, "7"},
        {"parity",
         "Parity:",
         FieldKind::List,
         parityRole,
         FieldCheck::None,
         {QStringLiteral("NONE"), QStringLiteral("ODD"), QStringLiteral("EVEN")},
         nullptr,
         "ODD"},
        {"enabled", "Enabled:", FieldKind::Check, enabledRole},
        {"power",
         "Power:",
         FieldKind::OnOff,
         switchRole,
         FieldCheck::None,
         {QStringLiteral("ON"), QStringLiteral("OFF")}},
        {"secret", "Secret:", FieldKind::Password, secretRole, FieldCheck::NoCjk},
        {"clock", "Clock:", FieldKind::ReadOnly, FieldTable::noRole},
    };
}

// A page with the table's rows.
struct Page {
    explicit Page(const QVector<Field> &fields = testFields())
        : table("Test", fields)
    {
        layout = new QFormLayout(&widget);
        table.build(layout);
    }
    bool on() const { return widget.findChild<QRadioButton *>(QStringLiteral("powerOn"))->isChecked(); }
    bool off() const { return widget.findChild<QRadioButton *>(QStringLiteral("powerOff"))->isChecked(); }

    QWidget widget;
    QFormLayout *layout;
    FieldTable table;
};

// What the fields show, in the order of the table.
QVariantList shown(const FieldTable &table)
{
    QVariantList values;
    for (const Field &field : table.fields()) {
        values.append(table.value(QString::fromLatin1(field.name)));
    }
    return values;
}

QVariantList roles(const QStandardItem &item)
{
    return {item.text(),           item.data(stationRole), item.data(parityRole), item.data(enabledRole),
            item.data(switchRole), item.data(secretRole)};
}

} // namespace

// One table builds, fills, saves and erases a form's fields.
class TestFieldTable : public QObject
{
    Q_OBJECT
private slots:
    void buildsOneLabelledRowAField();
    void secretIsHiddenAndClockCantBeTyped();
    void fillShowsTheItemAndSaveWritesItBack();
    void fillWritesDefaultsIntoEmptyRolesOnly();
    void unknownEntry_data();
    void unknownEntry();
    void listEntriesAreMatchedByCase();
    void fallbackIsMetInItsTranslation();
    void textsAreOfTheTablesContext();
    void flagIsTakenAsBooleanAndAsText_data();
    void flagIsTakenAsBooleanAndAsText();
    void otherSwitchTextsCheckNeitherButton();
    void eraseLeavesNoRoleBehind();
    void clearEmptiesAndSelectsFirst();
    void setTextReachesOneFieldAndKeepsUnknownEntries();
    void unknownNameHasNoValue();
    void pagesAddUpToOneTableWithOneValidatorACheck();
    void unseenFieldsCarryValuesInNoLayout();
    void choicesAreStoredAsTheirCodes_data();
    void choicesAreStoredAsTheirCodes();
    void numberedButtonsAreStoredAsANumber_data();
    void numberedButtonsAreStoredAsANumber();
    void checkTakesItsDefaultWhereTheRoleHoldsNothing_data();
    void checkTakesItsDefaultWhereTheRoleHoldsNothing();
    void patternRestrainsTypingAndIsShared();
    void scriptKeepsItsLines();
};

void TestFieldTable::buildsOneLabelledRowAField()
{
    Page page;
    QStringList rows;
    for (int row = 0; row < page.layout->rowCount(); ++row) {
        auto *label = qobject_cast<QLabel *>(page.layout->itemAt(row, QFormLayout::LabelRole)->widget());
        QWidget *field = page.layout->itemAt(row, QFormLayout::FieldRole)->widget();
        QCOMPARE(label->buddy(), field);
        QCOMPARE(page.table.label(field->objectName()), label);
        QCOMPARE(page.table.widget(field->objectName()), field);
        rows.append(label->text() + field->objectName());
    }
    QCOMPARE(rows,
             (QStringList{QStringLiteral("Name:name"), QStringLiteral("Station:station"),
                          QStringLiteral("Parity:parity"), QStringLiteral("Enabled:enabled"),
                          QStringLiteral("Power:power"), QStringLiteral("Secret:secret"),
                          QStringLiteral("Clock:clock")}));
}

void TestFieldTable::secretIsHiddenAndClockCantBeTyped()
{
    Page page;
    QCOMPARE(page.table.lineEdit(QStringLiteral("secret"))->echoMode(), QLineEdit::Password);
    QVERIFY(!page.table.lineEdit(QStringLiteral("secret"))->isReadOnly());
    QVERIFY(page.table.lineEdit(QStringLiteral("clock"))->isReadOnly());
    QCOMPARE(page.table.lineEdit(QStringLiteral("parity")), nullptr);
    QCOMPARE(page.table.comboBox(QStringLiteral("clock")), nullptr);
}

void TestFieldTable::fillShowsTheItemAndSaveWritesItBack()
{
    QStandardItem item(QStringLiteral("pump"));
    item.setData(QStringLiteral("12"), stationRole);
    item.setData(QStringLiteral("EVEN"), parityRole);
    item.setData(true, enabledRole);
    item.setData(QStringLiteral("off"), switchRole);
    item.setData(QStringLiteral("pass"), secretRole);
    const QVariantList stored = roles(item);

    Page page;
    page.table.fill(&item);
    QCOMPARE(shown(page.table), stored + QVariantList{QString()});

    QStandardItem copy;
    page.table.save(&copy);
    QCOMPARE(roles(copy), stored);
}

void TestFieldTable::fillWritesDefaultsIntoEmptyRolesOnly()
{
    Page page;
    QStandardItem item;
    page.table.fill(&item);
    QCOMPARE(roles(item), (QVariantList{QString(), QStringLiteral("7"), {}, {}, {}, {}}));
    QCOMPARE(page.table.text(QStringLiteral("station")), QStringLiteral("7"));

    item.setData(QStringLiteral("8"), stationRole);
    page.table.fill(&item);
    QCOMPARE(item.data(stationRole), QVariant(QStringLiteral("8")));
}

void TestFieldTable::unknownEntry_data()
{
    QTest::addColumn<bool>("keep");
    QTest::addColumn<bool>("hasFallback");
    QTest::addColumn<QString>("expected");
    QTest::newRow("to the fallback") << false << true << QStringLiteral("ODD");
    QTest::newRow("to the first entry") << false << false << QStringLiteral("NONE");
    QTest::newRow("kept") << true << true << QStringLiteral("EVEN");
}

void TestFieldTable::unknownEntry()
{
    QFETCH(bool, keep);
    QFETCH(bool, hasFallback);
    QFETCH(QString, expected);
    QVector<Field> fields = testFields();
    if (!hasFallback) {
        fields[2].listFallback = nullptr;
    }
    Page page(fields);
    page.table.setText(QStringLiteral("parity"), QStringLiteral("EVEN"));
    QStandardItem item;
    item.setData(QStringLiteral("MARK"), parityRole);
    page.table.fill(&item, keep ? FieldTable::Unknown::Keep : FieldTable::Unknown::SelectFallback);
    QCOMPARE(page.table.text(QStringLiteral("parity")), expected);
}

void TestFieldTable::listEntriesAreMatchedByCase()
{
    Page page;
    page.table.setText(QStringLiteral("parity"), QStringLiteral("even"));
    QCOMPARE(page.table.text(QStringLiteral("parity")), QStringLiteral("NONE"));
}

void TestFieldTable::fallbackIsMetInItsTranslation()
{
    class Upper : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *, const char *source, const char *, int) const override
        {
            return QLatin1Char('<') + QString::fromLatin1(source) + QLatin1Char('>');
        }
    } translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    Page page;
    QCOMPARE(page.table.label(QStringLiteral("name"))->text(), QStringLiteral("<Name:>"));
    QCOMPARE(page.widget.findChild<QRadioButton *>(QStringLiteral("powerOn"))->text(),
             QStringLiteral("<ON>"));
    QCOMPARE(page.widget.findChild<QRadioButton *>(QStringLiteral("powerOff"))->text(),
             QStringLiteral("<OFF>"));
    QStandardItem item;
    page.table.fill(&item);
    QCOMPARE(page.table.text(QStringLiteral("parity")), QStringLiteral("<ODD>"));
}

void TestFieldTable::textsAreOfTheTablesContext()
{
    class ByContext : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            return *context ? QString::fromLatin1(context) + QString::fromLatin1(source) : QString();
        }
    } translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QVector<Field> fields(
        2, {"list", "L", FieldKind::List, parityRole, FieldCheck::None, {QStringLiteral("a")}});
    fields[1].name = "plain";
    fields[1].isTranslated = false;
    const Page page(fields);
    QStringList texts;
    for (const char *name : {"list", "plain"}) {
        texts.append(page.table.label(QLatin1String(name))->text());
        texts.append(page.table.text(QLatin1String(name)));
    }
    QCOMPARE(texts,
             QStringList({QStringLiteral("TestL"), QStringLiteral("Testa"), QStringLiteral("L"),
                          QStringLiteral("a")}));
}

void TestFieldTable::flagIsTakenAsBooleanAndAsText_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("expected");
    QTest::newRow("boolean true") << QVariant(true) << true;
    QTest::newRow("boolean false") << QVariant(false) << false;
    QTest::newRow("text true") << QVariant(QStringLiteral("true")) << true;
    QTest::newRow("text false") << QVariant(QStringLiteral("false")) << false;
    QTest::newRow("nothing") << QVariant() << false;
}

void TestFieldTable::flagIsTakenAsBooleanAndAsText()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, expected);
    Page page;
    QStandardItem item;
    item.setData(stored, enabledRole);
    page.table.fill(&item);
    QCOMPARE(page.table.value(QStringLiteral("enabled")), QVariant(expected));
}

void TestFieldTable::otherSwitchTextsCheckNeitherButton()
{
    Page page;
    QVERIFY(!page.on());
    QVERIFY(!page.off());
    page.table.setText(QStringLiteral("power"), QStringLiteral("on"));
    QVERIFY(page.on());
    QVERIFY(!page.off());
    page.table.setText(QStringLiteral("power"), QStringLiteral("off"));
    QVERIFY(!page.on());
    QVERIFY(page.off());
    page.table.setText(QStringLiteral("power"), QStringLiteral("ON"));
    QVERIFY(!page.on());
    QVERIFY(!page.off());
    QCOMPARE(page.table.text(QStringLiteral("power")), QStringLiteral("off"));

    auto *on = page.widget.findChild<QRadioButton *>(QStringLiteral("powerOn"));
    page.widget.findChild<QRadioButton *>(QStringLiteral("powerOff"))->click();
    on->click();
    QVERIFY(page.on());
    QVERIFY(!page.off());
}

void TestFieldTable::eraseLeavesNoRoleBehind()
{
    Page page;
    QStandardItem item;
    page.table.save(&item);
    page.table.erase(&item);
    QCOMPARE(roles(item), (QVariantList{QString(), {}, {}, {}, {}, {}}));
}

void TestFieldTable::clearEmptiesAndSelectsFirst()
{
    QStandardItem item(QStringLiteral("pump"));
    item.setData(QStringLiteral("12"), stationRole);
    item.setData(QStringLiteral("EVEN"), parityRole);
    item.setData(true, enabledRole);
    item.setData(QStringLiteral("off"), switchRole);
    Page page;
    page.table.fill(&item);
    page.table.clear();
    QCOMPARE(shown(page.table),
             (QVariantList{QString(), QString(), QStringLiteral("NONE"), false, QStringLiteral("on"),
                           QString(), QString()}));
}

void TestFieldTable::setTextReachesOneFieldAndKeepsUnknownEntries()
{
    Page page;
    page.table.setText(QStringLiteral("clock"), QStringLiteral("12:00"));
    page.table.setText(QStringLiteral("parity"), QStringLiteral("EVEN"));
    page.table.setText(QStringLiteral("parity"), QStringLiteral("MARK"));
    page.table.setText(QStringLiteral("nobody"), QStringLiteral("x"));
    QCOMPARE(shown(page.table),
             (QVariantList{QString(), QString(), QStringLiteral("EVEN"), false, QStringLiteral("off"),
                           QString(), QStringLiteral("12:00")}));
}

void TestFieldTable::unknownNameHasNoValue()
{
    Page page;
    QCOMPARE(page.table.value(QStringLiteral("nobody")), QVariant());
    QCOMPARE(page.table.widget(QStringLiteral("nobody")), nullptr);
}

void TestFieldTable::pagesAddUpToOneTableWithOneValidatorACheck()
{
    QWidget form;
    FieldTable table("Test");
    for (const char *name : {"first", "second"}) {
        auto *page = new QWidget(&form);
        auto *layout = new QFormLayout(page);
        table.append({{name, "Text:", FieldKind::Text, FieldTable::noRole, FieldCheck::NoCjk}});
        table.build(layout);
        QCOMPARE(layout->rowCount(), 1);
    }
    const QLineEdit *first = table.lineEdit(QStringLiteral("first"));
    const QLineEdit *second = table.lineEdit(QStringLiteral("second"));
    QVERIFY(first->validator());
    QCOMPARE(first->validator(), second->validator());
    QVERIFY(first->parentWidget() != second->parentWidget());
}

void TestFieldTable::unseenFieldsCarryValuesInNoLayout()
{
    QWidget form;
    auto *layout = new QFormLayout(&form);
    FieldTable table("Test", testFields());
    table.buildUnseen(&form);
    form.show();
    QCOMPARE(layout->count(), 0);
    for (const QWidget *child : form.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        QVERIFY2(!child->isVisible(), qPrintable(child->objectName()));
    }
    QStandardItem item(QStringLiteral("pump"));
    table.fill(&item);
    QCOMPARE(table.text(QStringLiteral("name")), QStringLiteral("pump"));
}

void TestFieldTable::choicesAreStoredAsTheirCodes_data()
{
    QTest::addColumn<bool>("unknownShowsNone");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("saved");
    QTest::newRow("number") << false << QVariant(90) << QVariant(90);
    QTest::newRow("number as a document has it") << false << QVariant(QStringLiteral("90")) << QVariant(90);
    QTest::newRow("unknown") << false << QVariant(3) << QVariant(80);
    QTest::newRow("nothing") << false << QVariant() << QVariant(80);
    QTest::newRow("no number") << false << QVariant(QStringLiteral("gate")) << QVariant(80);
    QTest::newRow("number, else none") << true << QVariant(90) << QVariant(90);
    QTest::newRow("unknown, so none") << true << QVariant(3) << QVariant();
    QTest::newRow("nothing, so none") << true << QVariant() << QVariant();
}

void TestFieldTable::choicesAreStoredAsTheirCodes()
{
    QFETCH(bool, unknownShowsNone);
    QFETCH(QVariant, stored);
    QFETCH(QVariant, saved);
    Field field{"type", "Type:", FieldKind::Coded, stationRole};
    field.choices = {{"rain", 80}, {"gate", 90}};
    field.unknownShowsNone = unknownShowsNone;
    Page page({field});
    QStandardItem item;
    item.setData(stored, stationRole);
    page.table.fill(&item);
    page.table.save(&item);
    QCOMPARE(item.data(stationRole), saved);
    page.table.clear();
    QCOMPARE(page.table.value(QStringLiteral("type")), QVariant(80));
}

void TestFieldTable::numberedButtonsAreStoredAsANumber_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("saved");
    QTest::newRow("first") << QVariant(1) << QVariant(1);
    QTest::newRow("second") << QVariant(2) << QVariant(2);
    QTest::newRow("as a document has it") << QVariant(QStringLiteral("2")) << QVariant(2);
    QTest::newRow("zero") << QVariant(0) << QVariant(1);
    QTest::newRow("beyond") << QVariant(3) << QVariant(1);
    QTest::newRow("nothing") << QVariant() << QVariant(1);
}

void TestFieldTable::numberedButtonsAreStoredAsANumber()
{
    QFETCH(QVariant, stored);
    QFETCH(QVariant, saved);
    Page page({{"format",
                "Format:",
                FieldKind::Numbered,
                stationRole,
                FieldCheck::None,
                {QStringLiteral("plain"), QStringLiteral("own")}}});
    page.widget.findChild<QRadioButton *>(QStringLiteral("format2"))->setChecked(true);
    QStandardItem item;
    item.setData(stored, stationRole);
    page.table.fill(&item);
    page.table.save(&item);
    QCOMPARE(item.data(stationRole), saved);
}

void TestFieldTable::checkTakesItsDefaultWhereTheRoleHoldsNothing_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("nothing") << QVariant() << QVariant(true);
    QTest::newRow("off") << QVariant(false) << QVariant(false);
    QTest::newRow("off as a text") << QVariant(QStringLiteral("false")) << QVariant(QStringLiteral("false"));
    QTest::newRow("empty text") << QVariant(QString()) << QVariant(QString());
}

void TestFieldTable::checkTakesItsDefaultWhereTheRoleHoldsNothing()
{
    QFETCH(QVariant, stored);
    QFETCH(QVariant, expected);
    Page page({{"enabled", "Enabled:", FieldKind::Check, enabledRole, FieldCheck::None, {}, "true"}});
    QStandardItem item;
    item.setData(stored, enabledRole);
    page.table.fill(&item);
    QCOMPARE(item.data(enabledRole), expected);
}

void TestFieldTable::patternRestrainsTypingAndIsShared()
{
    Field local{"local", "Local:", FieldKind::Text, stationRole, FieldCheck::Pattern};
    local.pattern = "^[0-9A-F]{0,4}$";
    Field remote = local;
    remote.name = "remote";
    Page page({local, remote});
    QLineEdit *edit = page.table.lineEdit(QStringLiteral("local"));
    QTest::keyClicks(edit, QStringLiteral("4xD57A"));
    QCOMPARE(edit->text(), QStringLiteral("4D57"));
    QCOMPARE(edit->validator(), page.table.lineEdit(QStringLiteral("remote"))->validator());
}

void TestFieldTable::scriptKeepsItsLines()
{
    Page page({{"script", "Script:", FieldKind::Script, secretRole}});
    QStandardItem item;
    item.setData(QStringLiteral("var a = 1;\n\treturn a < 2;"), secretRole);
    page.table.fill(&item);
    page.table.save(&item);
    QCOMPARE(item.data(secretRole), QVariant(QStringLiteral("var a = 1;\n\treturn a < 2;")));
}

QTEST_MAIN(TestFieldTable)
#include "tst_fieldtable.moc"

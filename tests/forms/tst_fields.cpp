#include "forms/fieldgroup.h"

#include "model/itemroles.h"

#include <QAction>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStandardItem>
#include <QTextEdit>
#include <QTranslator>
#include <QtTest>

namespace {

// Only the first has a row among those of a PLC: "stationNum", of which "2" is the default.
enum TestRole {
    stationRole = plcPpiStationNumRole,
    parityRole = Qt::UserRole + 1,
    enabledRole,
    switchRole,
    secretRole,
};

// An empty page.
struct EmptyPage {
    EmptyPage()
    {
        layout = new QFormLayout(&widget);
        group.setLayout(layout);
    }

    QWidget widget;
    QFormLayout *layout;
    FieldGroup group{"Test", Definitions::Kind::Plc};
};

// A page with a field of most kinds.
struct Page : EmptyPage {
    Page()
    {
        name = group.add<TextField>(Qt::DisplayRole, "name", "Name:");
        station = group.add<TextField>(stationRole, "Station:")->check(integerValidator);
        parity = group.add<ListField>(parityRole, "parity", "Parity:")->entries("NONE ODD EVEN");
        enabled = group.add<CheckField>(enabledRole, "enabled", "Enabled:");
        power = group.add<OnOffField>(switchRole, "power", "Power:")->texts("on", "off");
        secret = group.add<TextField>(secretRole, "secret", "Secret:")->check(noCjkValidator)->password();
        clock = group.add<TextField>(FormField::noRole, "clock", "Clock:")->readOnly();
    }
    bool on() const { return widget.findChild<QRadioButton *>("powerOn")->isChecked(); }
    bool off() const { return widget.findChild<QRadioButton *>("powerOff")->isChecked(); }
    // What the fields show, in their order.
    QVariantList shown() const
    {
        return {name->value(),  station->value(), parity->value(), enabled->value(),
                power->value(), secret->value(),  clock->value()};
    }

    TextField *name;
    TextField *station;
    ListField *parity;
    CheckField *enabled;
    OnOffField *power;
    TextField *secret;
    TextField *clock;
};

QVariantList roles(const QStandardItem &item)
{
    return {item.text(),           item.data(stationRole), item.data(parityRole), item.data(enabledRole),
            item.data(switchRole), item.data(secretRole)};
}

void setRoles(QStandardItem &item)
{
    item.setText("pump");
    item.setData("12", stationRole);
    item.setData("EVEN", parityRole);
    item.setData(true, enabledRole);
    item.setData("off", switchRole);
    item.setData("pass", secretRole);
}

} // namespace

// A group of fields builds, fills, saves, clears and erases them.
class TestFields : public QObject
{
    Q_OBJECT
private slots:
    void addsOneLabelledRowAField();
    void secretIsHiddenAndClockCantBeTyped();
    void fillShowsTheItemAndSaveWritesItBack();
    void unknownEntry_data();
    void unknownEntry();
    void refilledList_data();
    void refilledList();
    void sourceTextsGoByTheFormsClass();
    void flagIsTakenAsBooleanAndAsText_data();
    void flagIsTakenAsBooleanAndAsText();
    void otherSwitchTextsCheckNeitherButton();
    void eraseLeavesNoRoleBehind();
    void clearEmptiesAndSelectsFirst();
    void setTextReachesOneFieldAndKeepsUnknownEntries();
    void labelGoesWithItsField();
    void pagesAddUpToOneGroupWithOneValidatorACheck();
    void unseenFieldsCarryValuesInNoLayout();
    void choicesAreStoredAsTheirCodes_data();
    void choicesAreStoredAsTheirCodes();
    void numberedButtonsAreStoredAsANumber_data();
    void numberedButtonsAreStoredAsANumber();
    void unsetCheckMayShowCheckedAndWritesNothing();
    void beginningOfAnAddressIsMarked_data();
    void beginningOfAnAddressIsMarked();
    void patternRestrainsTypingAndIsShared();
    void scriptKeepsItsLines();
};

void TestFields::addsOneLabelledRowAField()
{
    const Page page;
    QStringList rows;
    for (int row = 0; row < page.layout->rowCount(); ++row) {
        auto *label = qobject_cast<QLabel *>(page.layout->itemAt(row, QFormLayout::LabelRole)->widget());
        QWidget *field = page.layout->itemAt(row, QFormLayout::FieldRole)->widget();
        QCOMPARE(label->buddy(), field);
        rows.append(label->text() + field->objectName());
    }
    QCOMPARE(rows,
             (QStringList{"Name:name", "Station:stationNum", "Parity:parity", "Enabled:enabled",
                          "Power:power", "Secret:secret", "Clock:clock"}));
}

void TestFields::secretIsHiddenAndClockCantBeTyped()
{
    const Page page;
    QCOMPARE(page.secret->edit()->echoMode(), QLineEdit::Password);
    QVERIFY(!page.secret->edit()->isReadOnly());
    QVERIFY(page.clock->edit()->isReadOnly());
}

void TestFields::fillShowsTheItemAndSaveWritesItBack()
{
    QStandardItem item;
    setRoles(item);
    const QVariantList stored = roles(item);
    Page page;
    page.group.fill(&item);
    QCOMPARE(page.shown(), stored + QVariantList{QString()});

    QStandardItem copy;
    page.group.save(&copy);
    QCOMPARE(roles(copy), stored);
}

void TestFields::unknownEntry_data()
{
    QTest::addColumn<QByteArray>("fallback");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("expected");
    QTest::newRow("to the fallback") << QByteArray("ODD") << "MARK"
                                     << "ODD";
    QTest::newRow("empty, to the fallback") << QByteArray("ODD") << ""
                                            << "ODD";
    QTest::newRow("to the first entry") << QByteArray() << "MARK"
                                        << "NONE";
    QTest::newRow("of another case") << QByteArray() << "even"
                                     << "NONE";
    QTest::newRow("known") << QByteArray("ODD") << "EVEN"
                           << "EVEN";
}

void TestFields::unknownEntry()
{
    QFETCH(QByteArray, fallback);
    QFETCH(QString, stored);
    QFETCH(QString, expected);
    Page page;
    page.parity->fallback(fallback.constData());
    page.parity->setText("EVEN");
    QStandardItem item;
    item.setData(stored, parityRole);
    page.group.fill(&item);
    QCOMPARE(page.parity->text(), expected);
}

void TestFields::refilledList_data()
{
    QTest::addColumn<bool>("keepUnknown");
    QTest::addColumn<bool>("resetEmpty");
    QTest::addColumn<QString>("unknown");
    QTest::addColumn<QString>("empty");
    QTest::newRow("as it was filled") << false << false << "ODD"
                                      << "ODD";
    QTest::newRow("unknown stays") << true << false << "EVEN"
                                   << "EVEN";
    QTest::newRow("empty goes first") << false << true << "ODD"
                                      << "NONE";
    QTest::newRow("both") << true << true << "EVEN"
                          << "NONE";
}

void TestFields::refilledList()
{
    QFETCH(bool, keepUnknown);
    QFETCH(bool, resetEmpty);
    Page page;
    page.parity->fallback("ODD");
    if (keepUnknown) {
        page.group.keepUnknownOnRefill();
    }
    if (resetEmpty) {
        page.group.resetEmptyOnRefill();
    }
    QStandardItem item;
    page.group.fill(&item);
    QCOMPARE(page.parity->text(), "ODD");
    for (const char *stored : {"unknown", "empty"}) {
        page.parity->setText("EVEN");
        const QString text = QLatin1String(stored);
        item.setData(text == QLatin1String("empty") ? QString() : text, parityRole);
        page.group.refill(&item);
        QTEST(page.parity->text(), stored);
    }
}

void TestFields::sourceTextsGoByTheFormsClass()
{
    class ByContext : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *source, const char *, int) const override
        {
            return QLatin1String(context) + QLatin1Char(' ') + QLatin1String(source);
        }
    } translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    EmptyPage page;
    const auto *source = page.group.add<ListField>(FormField::noRole, "source", "L:")->entries("a b");
    const auto *ready = page.group.add<TextField>(FormField::noRole, "ready", QString("R:"));
    const auto *codes = page.group.add<CodedField>(FormField::noRole, "codes", "C:")->choices({{"c", 1}});
    QCOMPARE(source->label()->text(), "Test L:");
    QCOMPARE(source->text(), "a");
    QCOMPARE(ready->label()->text(), "R:");
    QCOMPARE(codes->list()->currentText(), "Test c");
}

void TestFields::flagIsTakenAsBooleanAndAsText_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("expected");
    QTest::newRow("boolean true") << QVariant(true) << true;
    QTest::newRow("boolean false") << QVariant(false) << false;
    QTest::newRow("text true") << QVariant("true") << true;
    QTest::newRow("text false") << QVariant("false") << false;
    QTest::newRow("nothing") << QVariant() << false;
}

void TestFields::flagIsTakenAsBooleanAndAsText()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, expected);
    Page page;
    QStandardItem item;
    item.setData(stored, enabledRole);
    page.group.fill(&item);
    QCOMPARE(page.enabled->value(), QVariant(expected));
    QCOMPARE(item.data(enabledRole), stored);
}

void TestFields::otherSwitchTextsCheckNeitherButton()
{
    const Page page;
    QVERIFY(!page.on());
    QVERIFY(!page.off());
    page.power->setText("on");
    QVERIFY(page.on());
    QVERIFY(!page.off());
    page.power->setText("off");
    QVERIFY(!page.on());
    QVERIFY(page.off());
    page.power->setText("ON");
    QVERIFY(!page.on());
    QVERIFY(!page.off());
    QCOMPARE(page.power->text(), "off");

    auto *on = page.widget.findChild<QRadioButton *>("powerOn");
    page.widget.findChild<QRadioButton *>("powerOff")->click();
    on->click();
    QVERIFY(page.on());
    QVERIFY(!page.off());
}

void TestFields::eraseLeavesNoRoleBehind()
{
    Page page;
    QStandardItem item;
    page.group.save(&item);
    page.group.erase(&item);
    QCOMPARE(roles(item), (QVariantList{QString(), {}, {}, {}, {}, {}}));
}

void TestFields::clearEmptiesAndSelectsFirst()
{
    QStandardItem item;
    setRoles(item);
    Page page;
    page.group.fill(&item);
    page.group.clear();
    QCOMPARE(page.shown(), (QVariantList{QString(), QString(), "NONE", false, "on", QString(), QString()}));
}

void TestFields::setTextReachesOneFieldAndKeepsUnknownEntries()
{
    const Page page;
    page.clock->setText("12:00");
    page.parity->setText("EVEN");
    page.parity->setText("MARK");
    QCOMPARE(page.shown(), (QVariantList{QString(), QString(), "EVEN", false, "off", QString(), "12:00"}));
}

void TestFields::labelGoesWithItsField()
{
    const Page page;
    page.secret->setVisible(false);
    page.clock->setEnabled(false);
    page.parity->disabled();
    QVERIFY(page.secret->edit()->isHidden() && page.secret->label()->isHidden());
    QVERIFY(!page.clock->edit()->isEnabled() && !page.clock->label()->isEnabled());
    QVERIFY(!page.parity->list()->isEnabled() && page.parity->label()->isEnabled());
}

void TestFields::pagesAddUpToOneGroupWithOneValidatorACheck()
{
    QWidget form;
    FieldGroup group("Test", Definitions::Kind::Plc);
    QVector<TextField *> fields;
    for (const char *name : {"first", "second"}) {
        auto *layout = new QFormLayout(new QWidget(&form));
        group.setLayout(layout);
        fields.append(group.add<TextField>(FormField::noRole, name, "Text:")->check(noCjkValidator));
        QCOMPARE(layout->rowCount(), 1);
    }
    QVERIFY(fields.first()->edit()->validator());
    QCOMPARE(fields.first()->edit()->validator(), fields.last()->edit()->validator());
    QVERIFY(fields.first()->edit()->parentWidget() != fields.last()->edit()->parentWidget());
}

void TestFields::unseenFieldsCarryValuesInNoLayout()
{
    QWidget form;
    auto *layout = new QFormLayout(&form);
    FieldGroup group("Test", Definitions::Kind::Plc);
    group.setPage(&form);
    const auto *name = group.addUnseen<TextField>(Qt::DisplayRole, "name", "Name:");
    form.show();
    QCOMPARE(layout->count(), 0);
    for (const QWidget *child : form.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        QVERIFY2(!child->isVisible(), qPrintable(child->objectName()));
    }
    QStandardItem item("pump");
    group.fill(&item);
    QCOMPARE(name->text(), "pump");
}

void TestFields::choicesAreStoredAsTheirCodes_data()
{
    QTest::addColumn<bool>("unknownShowsNone");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("saved");
    QTest::newRow("number") << false << QVariant(90) << QVariant(90);
    QTest::newRow("number as a document has it") << false << QVariant("90") << QVariant(90);
    QTest::newRow("unknown") << false << QVariant(3) << QVariant(80);
    QTest::newRow("nothing") << false << QVariant() << QVariant(80);
    QTest::newRow("no number") << false << QVariant("gate") << QVariant(80);
    QTest::newRow("number, else none") << true << QVariant(90) << QVariant(90);
    QTest::newRow("unknown, so none") << true << QVariant(3) << QVariant();
    QTest::newRow("nothing, so none") << true << QVariant() << QVariant();
}

void TestFields::choicesAreStoredAsTheirCodes()
{
    QFETCH(bool, unknownShowsNone);
    QFETCH(QVariant, stored);
    QFETCH(QVariant, saved);
    EmptyPage page;
    auto *type =
        page.group.add<CodedField>(parityRole, "type", "Type:")->choices({{"rain", 80}, {"gate", 90}});
    if (unknownShowsNone) {
        type->unknownShowsNone();
    }
    QStandardItem item;
    item.setData(stored, parityRole);
    page.group.fill(&item);
    page.group.save(&item);
    QCOMPARE(item.data(parityRole), saved);
    page.group.clear();
    QCOMPARE(type->value(), QVariant(80));
}

void TestFields::numberedButtonsAreStoredAsANumber_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QVariant>("saved");
    QTest::newRow("first") << QVariant(1) << QVariant(1);
    QTest::newRow("second") << QVariant(2) << QVariant(2);
    QTest::newRow("as a document has it") << QVariant("2") << QVariant(2);
    QTest::newRow("zero") << QVariant(0) << QVariant(1);
    QTest::newRow("beyond") << QVariant(3) << QVariant(1);
    QTest::newRow("nothing") << QVariant() << QVariant(1);
}

void TestFields::numberedButtonsAreStoredAsANumber()
{
    QFETCH(QVariant, stored);
    QFETCH(QVariant, saved);
    EmptyPage page;
    page.group.add<NumberedField>(parityRole, "format", "Format:")->texts({"plain", "own"});
    page.widget.findChild<QRadioButton *>("format2")->setChecked(true);
    QStandardItem item;
    item.setData(stored, parityRole);
    page.group.fill(&item);
    page.group.save(&item);
    QCOMPARE(item.data(parityRole), saved);
}

void TestFields::unsetCheckMayShowCheckedAndWritesNothing()
{
    Page page;
    page.enabled->unsetShowsChecked();
    QStandardItem item;
    page.group.fill(&item);
    QVERIFY(page.enabled->isChecked());
    QCOMPARE(item.data(enabledRole), QVariant());
    item.setData(false, enabledRole);
    page.group.fill(&item);
    QVERIFY(!page.enabled->isChecked());
}

void TestFields::beginningOfAnAddressIsMarked_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("marked");
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("three parts") << "192.168.1." << true;
    QTest::newRow("four parts") << "192.168.1.8" << false;
    QTest::newRow("no address at all") << "box.local" << false; // as another program may write it
}

void TestFields::beginningOfAnAddressIsMarked()
{
    QFETCH(QString, text);
    QFETCH(bool, marked);
    EmptyPage page;
    auto *field = page.group.add<TextField>(parityRole, "ip", "IP:")->check(ipv4Validator);
    const auto *mark = field->edit()->findChild<QAction *>("incompleteMark");
    QVERIFY(!mark->isVisible());
    field->setText(text);
    QCOMPARE(mark->isVisible(), marked);
    QCOMPARE(field->value(), QVariant(text));
    field->clear();
    QVERIFY(!mark->isVisible());
}

void TestFields::patternRestrainsTypingAndIsShared()
{
    EmptyPage page;
    const char *pattern = "^[0-9A-F]{0,4}$";
    QLineEdit *edit = page.group.add<TextField>(parityRole, "local", "Local:")->pattern(pattern)->edit();
    const auto *remote = page.group.add<TextField>(secretRole, "remote", "Remote:")->pattern(pattern);
    QTest::keyClicks(edit, "4xD57A");
    QCOMPARE(edit->text(), "4D57");
    QCOMPARE(edit->validator(), remote->edit()->validator());
}

void TestFields::scriptKeepsItsLines()
{
    EmptyPage page;
    const auto *script = page.group.add<ScriptField>(secretRole, "script", "Script:");
    const QString lines = "var a = 1;\n\treturn a < 2;";
    QStandardItem item;
    item.setData(lines, secretRole);
    page.group.fill(&item);
    page.group.save(&item);
    QCOMPARE(item.data(secretRole), QVariant(lines));
    page.group.clear();
    QCOMPARE(script->text(), lines);
}

QTEST_MAIN(TestFields)
#include "tst_fields.moc"

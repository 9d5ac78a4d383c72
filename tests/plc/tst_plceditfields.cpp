#include "plcformtest.h"

#include <QFormLayout>
#include <QIcon>
#include <QIntValidator>
#include <QRegExpValidator>
#include <QRegularExpressionValidator>

// The fields of the PLC form, row by row of their table.
class TestPLCEditFields : public PlcFormTest
{
    Q_OBJECT
private slots:
    void groupsFromTopToBottom();
    void groupHasItsFieldsInOrder_data();
    void groupHasItsFieldsInOrder();
    void fieldIsOfItsKind_data();
    void fieldIsOfItsKind();
    void fieldShowsAndSavesItsRole_data();
    void fieldShowsAndSavesItsRole();
    void checksRestrainTyping_data();
    void checksRestrainTyping();
    void tsapFieldsShareTheirValidator();
    void attributesShowTheItem();
    void parameterListHasItsRows();
    void labelsOfAllGroupsAreAligned();
    void omronModelIsNeverSeen();

private:
    const PlcInput &input() const
    {
        QFETCH(int, place);
        return plcInputs.at(place);
    }
    void addInputRows() const;
};

void TestPLCEditFields::addInputRows() const
{
    QTest::addColumn<int>("place");
    for (int place = 0; place < plcInputs.size(); ++place) {
        QTest::addRow("%s %s", plcInputs.at(place).group, plcInputs.at(place).name) << place;
    }
}

void TestPLCEditFields::groupsFromTopToBottom()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.open();
    QStringList groups;
    for (const QGroupBox *box : plc.form->findChildren<QGroupBox *>()) {
        groups.append(box->objectName() + QLatin1Char('=') + box->title());
    }
    QStringList expected{S("attributes=PLC Attribute"),
                         S("network=Network Layer Information"),
                         S("serial=Serial Port Information"),
                         S("s7Model=PLC Information"),
                         S("s7Rack="),
                         S("s7Tsap=")};
    for (const char *group :
         {"ppi", "mitsubishiEip", "mc3c", "mc1e", "mc3e", "fxLinks", "fxSerial", "fins", "omronEip",
          "hostLink", "allenBradleyEip", "df1", "ads", "inovance", "xinje", "modbus", "delta"}) {
        expected.append(S(group) + S("=PLC Information"));
    }
    expected.append("parameters=Parameter List");
    QCOMPARE(expected.size(), 24); // 23 of fields, and the parameters
    QCOMPARE(groups, expected);

    const auto *column = plc.box("attributes")->parentWidget()->layout();
    int place = 0;
    for (const QGroupBox *box : plc.form->findChildren<QGroupBox *>()) {
        QCOMPARE(column->itemAt(place++)->widget(), box);
    }
}

void TestPLCEditFields::groupHasItsFieldsInOrder_data()
{
    QTest::addColumn<QString>("fields");
    QMap<QString, QStringList> fields;
    for (const PlcInput &each : plcInputs) {
        fields[S(each.group)].append(S(each.label) + S(each.name));
    }
    fields[S("attributes")] =
        QStringList{S("PLC Name:name"), S("Manufacturer:manufacturer"), S("Protocol:protocol")};
    fields[S("s7Model")] = QStringList{S("Model:model")};
    fields.remove(S("parameters"));
    for (auto it = fields.cbegin(); it != fields.cend(); ++it) {
        QTest::newRow(qPrintable(it.key())) << it.value().join(QLatin1Char('|'));
    }
}

void TestPLCEditFields::groupHasItsFieldsInOrder()
{
    QFETCH(QString, fields);
    PlcUnderTest plc("Siemens", "S7");
    plc.open();
    const auto *form = qobject_cast<QFormLayout *>(plc.box(QTest::currentDataTag())->layout());
    QVERIFY(form);
    QStringList found;
    for (int row = 0; row < form->rowCount(); ++row) {
        QWidget *field = form->itemAt(row, QFormLayout::FieldRole)->widget();
        const auto *label = qobject_cast<QLabel *>(form->labelForField(field));
        QCOMPARE(label->buddy(), field);
        found.append(label->text() + field->objectName());
    }
    QCOMPARE(found.join(QLatin1Char('|')), fields);
}

void TestPLCEditFields::fieldIsOfItsKind_data()
{
    addInputRows();
}

void TestPLCEditFields::fieldIsOfItsKind()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.open();
    auto *widget = plc.input<QWidget>(input().group, input().name);
    QVERIFY(widget);
    const QString kind = S(input().kind);
    if (kind == "check") {
        QVERIFY(qobject_cast<QCheckBox *>(widget));
    } else if (kind == "list" || kind == "codes") {
        const auto *list = qobject_cast<QComboBox *>(widget);
        QCOMPARE(entriesOf(list).join(QLatin1Char('|')), S(input().entries));
        QVERIFY(!list->isEditable());
        QCOMPARE(list->isEnabled(), S(input().group) != "modbus" || S(input().name) != "series");
    } else {
        const auto *edit = qobject_cast<QLineEdit *>(widget);
        QVERIFY(edit && !edit->isReadOnly());
        if (kind == "int" || kind == "port") {
            const auto *range = qobject_cast<const QIntValidator *>(edit->validator());
            QVERIFY(range);
            QCOMPARE(range->bottom(), -1);
            QCOMPARE(range->top(), kind == "port" ? 65535 : 2147483647);
        } else if (kind == "ip") {
            QVERIFY(qobject_cast<const QRegExpValidator *>(edit->validator()));
        } else {
            const auto *pattern = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
            QVERIFY(pattern);
            QCOMPARE(pattern->regularExpression().pattern(),
                     kind == "tsap" ? S("^[0-9A-Fa-f]{0,4}$") : S("^[0-9A-Fa-f]*$"));
        }
    }
}

void TestPLCEditFields::fieldShowsAndSavesItsRole_data()
{
    addInputRows();
}

// From the role into the form, flags as text or boolean, and back with the type that a save gives.
void TestPLCEditFields::fieldShowsAndSavesItsRole()
{
    const bool isFlag = S(input().kind) == "check";
    for (const PlcKind &kind : plcKinds) {
        const QStringList groups = words(kind.groups) + QStringList("parameters");
        if (!groups.contains(S(input().group))) {
            continue;
        }
        PlcUnderTest plc(kind);
        plc.item->setData(S(input().other), input().role);
        plc.openAndShow();
        QCOMPARE(plc.shown(input()), S(input().other));
        plc.form->saveChanges();
        RoleLines expected;
        expected.value(input(), input().other);
        QVERIFY2(ProjectDump::roles(plc.item.get()).contains(expected.lines().first()),
                 qPrintable(ProjectDump::roles(plc.item.get()).join(QLatin1Char('\n'))));
        if (isFlag) {
            for (bool value : {false, true}) {
                plc.item->setData(value, input().role);
                plc.form->replaceItem(plc.item.get());
                QCOMPARE(plc.shown(input()), value ? S("true") : S("false"));
            }
        }
        return;
    }
    QFAIL("no kind shows this field");
}

void TestPLCEditFields::checksRestrainTyping_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("port") << S("network") << S("port") << S("-1x") << S("-1");
    QTest::newRow("address") << S("network") << S("ip") << S("10.256a") << S("10.25");
    QTest::newRow("TSAP") << S("s7Tsap") << S("localTSAP") << S("4dG5790") << S("4d57");
    QTest::newRow("hexadecimal") << S("mc1e") << S("stationNum") << S("0xFfg00112233") << S("0Ff00112233");
    QTest::newRow("number") << S("df1") << S("targetNode") << S("-2.1") << S("-1");
}

void TestPLCEditFields::checksRestrainTyping()
{
    QFETCH(QString, group);
    QFETCH(QString, name);
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    PlcUnderTest plc("Siemens", "S7");
    plc.open();
    auto *edit = plc.input<QLineEdit>(group.toLatin1().constData(), name.toLatin1().constData());
    typeInto(edit, typed);
    QCOMPARE(edit->text(), taken);
}

void TestPLCEditFields::tsapFieldsShareTheirValidator()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.open();
    QVERIFY(plc.input<QLineEdit>("s7Tsap", "localTSAP")->validator());
    QCOMPARE(plc.input<QLineEdit>("s7Tsap", "localTSAP")->validator(),
             plc.input<QLineEdit>("s7Tsap", "destTSA")->validator());
}

void TestPLCEditFields::attributesShowTheItem()
{
    PlcUnderTest plc("Omron", "EtherNet/IP");
    plc.open();
    const auto *name = plc.input<QLineEdit>("attributes", "name");
    QCOMPARE(name->text(), "press 1");
    QVERIFY(name->isReadOnly());
    const auto *manufacturer = plc.input<QLineEdit>("attributes", "manufacturer");
    QCOMPARE(manufacturer->text(), "Omron");
    QVERIFY(manufacturer->isReadOnly());
    QCOMPARE(plc.protocols()->currentText(), "EtherNet/IP");
    QCOMPARE(plc.protocols()->count(), 3);
    QVERIFY(plc.protocols()->isEnabled());
}

void TestPLCEditFields::parameterListHasItsRows()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    QGroupBox *box = plc.box("parameters");
    QCOMPARE(box->height(), 600);
    const auto *trigger = plc.input<QComboBox>("parameters", "trigger");
    QCOMPARE(trigger->count(), 1);
    QCOMPARE(trigger->currentText(), "Timed Loops");
    const auto *period = plc.input<QLineEdit>("parameters", "collectionInterval");
    QCOMPARE(period->text(), "2000");

    const auto *label = qobject_cast<QLabel *>(
        qobject_cast<QFormLayout *>(box->layout())->itemAt(0, QFormLayout::LabelRole)->widget());
    QCOMPARE(label->text(), "Trigger Conditions:");
    QCOMPARE(label->buddy(), period);
    const auto left = [box](const QWidget *widget) { return widget->mapTo(box, QPoint()).x(); };
    const auto top = [box](const QWidget *widget) { return widget->mapTo(box, QPoint()).y(); };
    QVERIFY(left(label) < left(trigger) && left(trigger) < left(period));

    const struct {
        const char *name;
        const char *text;
        const char *icon;
    } buttons[] = {{"addButton", "Add", "add.svg"},
                   {"removeAllButton", "Remove All", "cancel.svg"},
                   {"importButton", "Import", "read.svg"},
                   {"exportButton", "Export", "write.svg"}};
    int before = 0;
    for (const auto &each : buttons) {
        const auto *button = box->findChild<QPushButton *>(S(each.name));
        QCOMPARE(button->text(), S(each.text));
        QCOMPARE(ProjectDump::iconBytes(button->icon()),
                 ProjectDump::iconBytes(S(":/adsdemo/images/") + S(each.icon)));
        QVERIFY(left(button) > before);
        before = left(button);
        QVERIFY(top(button) > top(period) && top(button) < top(plc.table()));
    }
    QCOMPARE(plc.table()->columnCount(), 10);
    QVERIFY(plc.table()->height() > 400);
}

void TestPLCEditFields::labelsOfAllGroupsAreAligned()
{
    PlcUnderTest plc("Omron", "HostLink");
    plc.openAndShow();
    const QWidget *content = plc.box("attributes")->parentWidget();
    QSet<int> edges;
    for (const char *path : {"attributes/name", "serial/communicationGap", "hostLink/hostcomputerUnit",
                             "hostLink/stationNum", "parameters/trigger"}) {
        const QStringList parts = words(path, '/');
        const auto *field = plc.input<QWidget>(qPrintable(parts.first()), qPrintable(parts.last()));
        edges.insert(field->mapTo(content, QPoint()).x());
    }
    QCOMPARE(edges.size(), 1);
}

void TestPLCEditFields::omronModelIsNeverSeen()
{
    PlcUnderTest plc("Omron", "EtherNet/IP");
    plc.openAndShow();
    const auto *model = plc.form->findChild<QLineEdit *>("omronModel");
    QVERIFY(model);
    QCOMPARE(model->text(), "omron-njnx");
    QVERIFY(!model->isVisible());
    for (const QLabel *label : plc.form->findChildren<QLabel *>()) {
        QVERIFY(label->text() != "Model:" || !label->isVisible());
    }
}

QTEST_MAIN(TestPLCEditFields)
#include "tst_plceditfields.moc"

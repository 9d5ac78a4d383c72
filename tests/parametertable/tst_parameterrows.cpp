#include "parameterformtest.h"
#include "parametertable/tablenote.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>

// What a user does with whole rows of the parameter table, and on the keyboard.
class TestParameterRows : public ParameterFormTest
{
    Q_OBJECT
private slots:
    void cleanup() override;

    void deleteButtonTellsWhichRowItTakes();
    void deleteButtonShowsTextsAsTheyAre();
    void cutNamesAreToldInFull();
    void typedPermissionStays();
    void typedEntryIsSelected_data();
    void typedEntryIsSelected();
    void typedEntryIsSelectedInTheOpenList_data();
    void typedEntryIsSelectedInTheOpenList();
    void tabGoesThroughTheRowsToTheButtonsBelow();
    void rowWithABadLengthIsRemovedAfterItsMessage_data();
    void rowWithABadLengthIsRemovedAfterItsMessage();
    void formMayDieBelowTheMessageOfARemovedRow_data();
    void formMayDieBelowTheMessageOfARemovedRow();
    void itemIsCheckedBeforeItsRowGoes();
    void formMayDieBelowTheMessageOfAnItem();
    void copiedRowsArePastedBelow();
    void rowsGoFromATableToAnother();
    void refusedRowsAreToldInTheNote();
    void clipboardWithoutRowsIsToldInTheNote_data();
    void clipboardWithoutRowsIsToldInTheNote();
    void pasteInACellIsForTheCell();
    void rowHeaderTakesTheKeysAlong();
    void menuOffersCopyAndPaste();
    void onlyCopyWithoutChecksForRowsFromOutside();

private:
    // A table, of Modbus unless said, between its buttons and one below, on screen.
    void showWithButtons(const RowList &rows) { showWithButtons(ParameterVariant::modbus(), rows); }
    void showWithButtons(const ParameterVariant &variant, const RowList &rows);
    void typeIntoItem(int row, int column, const QString &text);
    QString tipOf(QWidget *widget) const;
    QStringList names() const;
    QString note() const { return m_form->findChild<TableNote *>()->text(); }
    QStringList noteLines() const
    {
        const QString tip = m_form->findChild<TableNote *>()->toolTip();
        return QTextDocumentFragment::fromHtml(tip).toPlainText().split('\n');
    }
    static QString pasteable(const QStringList &rows) { return rows.join('\n').replace(',', '\t'); }

    QPointer<QPushButton> m_below;
};

void TestParameterRows::cleanup()
{
    QToolTip::hideText();
    QApplication::clipboard()->clear();
    ParameterFormTest::cleanup();
}

void TestParameterRows::showWithButtons(const ParameterVariant &variant, const RowList &rows)
{
    make(variant);
    auto *column = qobject_cast<QVBoxLayout *>(m_form->layout());
    column->addWidget(m_form->makeTableButtons(m_form));
    column->addWidget(m_table);
    m_below = new QPushButton("below", m_form);
    column->addWidget(m_below);
    QWidget::setTabOrder(m_table, m_below);
    m_form->loadParameters(rows);
    m_form->show();
    QApplication::setActiveWindow(m_form);
    QVERIFY(QTest::qWaitForWindowActive(m_form));
}

QString TestParameterRows::tipOf(QWidget *widget) const
{
    QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), widget->mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(widget, &help);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
}

QStringList TestParameterRows::names() const
{
    QStringList names;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        names.append(m_table->text(row, Name));
    }
    return names;
}

void TestParameterRows::deleteButtonTellsWhichRowItTakes()
{
    RUN(showWithButtons({modbusRow("40001", "volt"), modbusRow("40002", "current")}));
    QWidget *last = m_table->cellWidget(1, 5);
    m_table->setCurrentCell(-1, -1);
    QCOMPARE(tipOf(last), "Delete the current row: none is current, click the number of one first");
    m_table->setCurrentCell(0, Name);
    QCOMPARE(tipOf(last), "Delete the current row: row 1, name \"volt\", address \"40001\"");
    edit(0, Name, "voltage");
    QCOMPARE(tipOf(last), "Delete the current row: row 1, name \"voltage\", address \"40001\"");
    m_form->addParameter();
    m_table->setCurrentCell(2, Name);
    editor(2, Name)->setText("new");
    QCOMPARE(tipOf(last), "Delete the current row: row 3, name \"new\", address \"\"");
    QCOMPARE(tipOf(m_table->cellWidget(2, 5)), tipOf(last));
    qobject_cast<QPushButton *>(last)->click();
    QCOMPARE(names(), QStringList({"voltage", "current"}));
}

// A column of points with long names would look all the same.
void TestParameterRows::cutNamesAreToldInFull()
{
    RUN(showWithButtons({modbusRow("40001", "Feeder 1 <b>Phase A</b> voltage"), modbusRow("40002", "I")}));
    const auto tipAt = [this](int row) {
        const QPoint place = m_table->visualItemRect(m_table->item(row, Name)).center();
        QHelpEvent help(QEvent::ToolTip, place, m_table->viewport()->mapToGlobal(place));
        QToolTip::hideText();
        QApplication::sendEvent(m_table->viewport(), &help);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    };
    QCOMPARE(tipAt(0), "Feeder 1 <b>Phase A</b> voltage");
    QTRY_COMPARE(tipAt(1), QString());
}

void TestParameterRows::deleteButtonShowsTextsAsTheyAre()
{
    RUN(showWithButtons({modbusRow("<i>1</i>", "<b>%3 &amp;</b>")}));
    m_table->setCurrentCell(0, Name);
    QCOMPARE(tipOf(m_table->cellWidget(0, 5)),
             "Delete the current row: row 1, name \"<b>%3 &amp;</b>\", address \"<i>1</i>\"");
}

void TestParameterRows::typedPermissionStays()
{
    RUN(showWithButtons({{"0", "a", "float", "1", "r"}}));
    QComboBox *permissions = list(0, Permissions);
    permissions->setFocus();
    for (int again = 0; again < 3; ++again) {
        QTest::keyClick(permissions, Qt::Key_R);
        QCOMPARE(permissions->currentText(), "r");
    }
}

void TestParameterRows::typedEntryIsSelected_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("after");
    QTest::newRow("rw from r") << int(Permissions) << "r"
                               << "rw"
                               << "rw";
    QTest::newRow("rw from rw") << int(Permissions) << "rw"
                                << "rw"
                                << "rw";
    QTest::newRow("r from rw") << int(Permissions) << "rw"
                               << "r"
                               << "r";
    QTest::newRow("R") << int(Permissions) << "rw"
                       << "R"
                       << "r";
    QTest::newRow("what no entry begins with") << int(Permissions) << "rw"
                                               << "x"
                                               << "rw";
    QTest::newRow("beginning of a type") << int(Type) << "bool"
                                         << "u"
                                         << "uint8";
    QTest::newRow("whole type") << int(Type) << "bool"
                                << "int8"
                                << "int8";
    QTest::newRow("another whole type") << int(Type) << "bool"
                                        << "int16"
                                        << "int16";
}

void TestParameterRows::typedEntryIsSelected()
{
    QFETCH(int, column);
    QFETCH(QString, before);
    QFETCH(QString, typed);
    QFETCH(QString, after);
    RUN(showWithButtons({{"0", "a", "bool", "1", "r"}}));
    list(0, column)->setCurrentText(before);
    list(0, column)->setFocus();
    QTest::keyClicks(list(0, column), typed);
    QCOMPARE(list(0, column)->currentText(), after);
}

void TestParameterRows::typedEntryIsSelectedInTheOpenList_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("before");
    QTest::newRow("r") << "r" << QString();
    QTest::newRow("rw") << "rw" << QString();
    QTest::newRow("r behind r") << "r"
                                << "r";
}

void TestParameterRows::typedEntryIsSelectedInTheOpenList()
{
    QFETCH(QString, typed);
    QFETCH(QString, before);
    RUN(showWithButtons({{"0", "a", "bool", "1", "r"}}));
    QComboBox *permissions = list(0, Permissions);
    permissions->setFocus();
    QTest::keyClicks(permissions, before);
    QTest::keyClick(permissions, Qt::Key_Space);
    QVERIFY(permissions->view()->isVisible());
    QTest::keyClicks(permissions->view(), typed);
    QTest::keyClick(permissions->view(), Qt::Key_Return);
    QCOMPARE(permissions->currentText(), typed);
}

void TestParameterRows::tabGoesThroughTheRowsToTheButtonsBelow()
{
    RUN(showWithButtons({modbusRow("0", "a"), modbusRow("1", "b")}));
    m_form->addParameter();
    m_table->removeRow(1);
    m_form->addParameter();
    QVector<QWidget *> expected;
    for (const int row : {0, 1, 2}) {
        for (const int column : {int(Address), int(Name), int(Type), int(Permissions), 5}) {
            if (QWidget *cell = m_table->cellWidget(row, column)) {
                expected.append(cell);
            }
        }
    }
    expected.append(m_below);
    QCOMPARE(expected.size(), 3 + 5 + 5 + 1);
    m_table->setFocus();
    for (QWidget *next : qAsConst(expected)) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
        QVERIFY(next->isVisible());
    }
}

void TestParameterRows::rowWithABadLengthIsRemovedAfterItsMessage_data()
{
    QTest::addColumn<bool>("all");
    QTest::newRow("the row") << false;
    QTest::newRow("all rows") << true;
}

void TestParameterRows::rowWithABadLengthIsRemovedAfterItsMessage()
{
    QFETCH(bool, all);
    RUN(showWithButtons({{"0", "a", "string", "1", "r"}, {"1", "b", "string", "1", "r"}}));
    editor(0, Length)->setFocus();
    editor(0, Length)->setText("none");
    int rowsBelow = -1;
    QTimer::singleShot(0, m_form, [this, &rowsBelow] { rowsBelow = m_table->rowCount(); });
    m_messages->expect();
    if (all) {
        click(*m_form, "removeAllButton");
    } else {
        QTest::mouseClick(m_table->cellWidget(1, 5), Qt::LeftButton);
    }
    QCOMPARE(m_messages->told(), QStringList{"Warning|Length must be a positive integer between 1 and 10."});
    QCOMPARE(rowsBelow, 2);
    QCOMPARE(names(), all ? QStringList() : QStringList{"b"});
}

void TestParameterRows::formMayDieBelowTheMessageOfARemovedRow_data()
{
    rowWithABadLengthIsRemovedAfterItsMessage_data();
}

void TestParameterRows::formMayDieBelowTheMessageOfARemovedRow()
{
    QFETCH(bool, all);
    RUN(showWithButtons({{"0", "a", "string", "1", "r"}}));
    editor(0, Length)->setFocus();
    editor(0, Length)->setText("none");
    const QPointer<ParameterForm> form(m_form);
    const UnwatchedModals unwatched;
    QTimer::singleShot(0, this, [this] { delete std::exchange(m_form, nullptr); });
    if (all) {
        form->removeAllParameters();
    } else {
        form->removeParameter();
    }
    QVERIFY(!form);
}

// Opens the item of a cell and types into it.
void TestParameterRows::typeIntoItem(int row, int column, const QString &text)
{
    m_table->setCurrentCell(row, column);
    m_table->editItem(m_table->item(row, column));
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void TestParameterRows::itemIsCheckedBeforeItsRowGoes()
{
    RUN(showWithButtons({modbusRow("0", "a"), modbusRow("1", "b")}));
    typeIntoItem(0, Name, "b");
    m_form->removeParameter();
    QCOMPARE(
        m_workspace->messages,
        QStringList{"The name of the '2' line already exists in this tab. Please use a different name."});
    QCOMPARE(names(), QStringList{"b"});
    QCOMPARE(QApplication::focusWidget(), m_table);
}

void TestParameterRows::formMayDieBelowTheMessageOfAnItem()
{
    RUN(showWithButtons(ParameterVariant::opcUa(), {{"Pump", "a", "1", "GUID Node", "r"}}));
    typeIntoItem(0, ParameterVariant::opcUa().indexOf(ParameterCell::SpatialIndex), "none");
    const QPointer<ParameterForm> form(m_form);
    const UnwatchedModals unwatched;
    QTimer::singleShot(0, this, [this] { delete std::exchange(m_form, nullptr); });
    form->removeAllParameters();
    QVERIFY(!form);
}

void TestParameterRows::copiedRowsArePastedBelow()
{
    const RowList rows{modbusRow("0", "a"), modbusRow("1", "say \"b\""), modbusRow("2", "c\td")};
    RUN(showWithButtons(rows));
    m_form->addParameter();
    editor(3, Name)->setText("added");
    m_table->setFocus();
    m_table->selectRow(1);
    m_table->selectionModel()->select(m_table->model()->index(3, Address),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::keySequence(m_table, QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), "1\t\"say \"\"b\"\"\"\tfloat\t1\trw\n\tadded\tbool\t1\tr");
    m_table->clearSelection();
    m_table->selectRow(2);
    QTest::keySequence(m_table, QKeySequence::Copy);
    QTest::keySequence(m_table, QKeySequence::Paste);
    const RowList pasted{{"", "added", "bool", "1", "r"}, rows.at(2)};
    QCOMPARE(m_table->rows(), rows + pasted);
    QCOMPARE(m_table->currentRow(), 4);
    QCOMPARE(note(), "Rows pasted: 1");
    QCOMPARE(m_workspace->messages, QStringList());
    edit(4, Name, "a"); // a row like one of a file, with its checks
    QCOMPARE(m_table->text(4, Name), QString());
}

void TestParameterRows::rowsGoFromATableToAnother()
{
    RUN(showWithButtons({modbusRow("0", "a"), modbusRow("1", "b")}));
    m_table->selectAll();
    QTest::keySequence(m_table, QKeySequence::Copy);
    ParameterTable *other = m_form->makeTable(m_form);
    other->findChild<QAction *>("paste")->trigger();
    QCOMPARE(other->rows(), m_table->rows());
    QCOMPARE(m_table->rowCount(), 2);
}

void TestParameterRows::refusedRowsAreToldInTheNote()
{
    RUN(showWithButtons({modbusRow("0", "a")}));
    QStringList rows{"Address,Name,Type,Length,Permissions,Deleat", "1,<b>,float,1,r,", "2,c,FLOAT,1,r,"};
    for (int bad = 0; bad < 30; ++bad) {
        rows.append("D 1,bad,float,1,r,");
    }
    QApplication::clipboard()->setText(pasteable(rows));
    QTest::keySequence(m_table, QKeySequence::Paste);
    QCOMPARE(names(), QStringList({"a", "<b>", "c"}));
    QCOMPARE(list(2, Type)->currentText(), "bool");
    QCOMPARE(note(), "Rows pasted: 2; with faults: 31");
    const QStringList told = noteLines();
    QCOMPARE(told.size(), 1 + 20 + 1);
    QCOMPARE(told.at(1), "Row 3, \"c\": Type \"FLOAT\" is not in the list");
    QCOMPARE(told.at(2), "Row 4, \"bad\": Address \"D 1\" is not allowed");
    QCOMPARE(told.last(), "and 11 more");
    QCOMPARE(m_messages->told(), QStringList());
}

void TestParameterRows::clipboardWithoutRowsIsToldInTheNote_data()
{
    QTest::addColumn<bool>("isText");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    QTest::newRow("nothing") << true << QString() << "The clipboard holds no rows";
    QTest::newRow("other data") << false << "picture"
                                << "The clipboard holds no rows";
    QTest::newRow("binary") << true << QString("a\tb") + QChar(QChar::Null) << "The clipboard holds no rows";
    QTest::newRow("too much") << true << QString(5 * 1024 * 1024, QLatin1Char('x'))
                              << "The clipboard holds too much to be pasted";
    QTest::newRow("a word") << true << "word"
                            << "Rows pasted: 0; with faults: 1";
}

void TestParameterRows::clipboardWithoutRowsIsToldInTheNote()
{
    QFETCH(bool, isText);
    QFETCH(QString, text);
    QFETCH(QString, told);
    RUN(showWithButtons({modbusRow("0", "a")}));
    auto *data = new QMimeData;
    data->setData(isText ? QString("text/plain") : "image/png", text.toUtf8());
    QApplication::clipboard()->setMimeData(data);
    m_table->setFocus();
    QTest::keySequence(m_table, QKeySequence::Paste);
    QCOMPARE(note(), told);
    QCOMPARE(names(), QStringList{"a"});
}

void TestParameterRows::pasteInACellIsForTheCell()
{
    RUN(showWithButtons({}));
    m_form->addParameter();
    QApplication::clipboard()->setText(pasteable({"1,b,float,1,r"}));
    editor(0, Name)->setFocus();
    QTest::keySequence(editor(0, Name), QKeySequence::Paste);
    list(0, Type)->setFocus();
    QTest::keySequence(list(0, Type), QKeySequence::Paste);
    QCOMPARE(m_table->rowCount(), 1);
    QVERIFY(editor(0, Name)->text().startsWith("1"));
}

void TestParameterRows::rowHeaderTakesTheKeysAlong()
{
    RUN(showWithButtons({modbusRow("0", "a"), modbusRow("1", "b")}));
    m_below->setFocus();
    QHeaderView *header = m_table->verticalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(5, header->sectionViewportPosition(1) + 5));
    QVERIFY(m_table->hasFocus());
    QTest::keySequence(m_table, QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), "1\tb\tfloat\t1\trw");
}

void TestParameterRows::menuOffersCopyAndPaste()
{
    RUN(showWithButtons({modbusRow("0", "a")}));
    m_table->selectRow(0);
    for (const QString &wanted : {QString("Copy"), QString("Paste")}) {
        m_dialogs->expect([wanted](QWidget *menu) {
            const QList<QAction *> actions = menu->actions();
            QCOMPARE(actions.size(), 2);
            const int place = actions.first()->text() == wanted ? 0 : 1;
            QCOMPARE(actions.at(place)->text(), wanted);
            qobject_cast<QMenu *>(menu)->setActiveAction(actions.at(place));
            QTest::keyClick(menu, Qt::Key_Return);
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                                m_table->viewport()->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(m_table->viewport(), &event);
    }
    QCOMPARE(names(), QStringList({"a", "a"}));
}

void TestParameterRows::onlyCopyWithoutChecksForRowsFromOutside()
{
    make(ParameterVariant::dido());
    QVERIFY(m_table->findChild<QAction *>("copy"));
    QVERIFY(!m_table->findChild<QAction *>("paste"));
    m_form->loadParameters({{"1", "a", "r", "Timed"}});
    m_table->setCurrentCell(0, 0);
    m_table->findChild<QAction *>("copy")->trigger();
    QCOMPARE(QApplication::clipboard()->text(), "1\ta\tr\tTimed");
}

QTEST_MAIN(TestParameterRows)
#include "tst_parameterrows.moc"

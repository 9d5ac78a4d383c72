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

private:
    // A Modbus table between its buttons and one below, on screen.
    void showWithButtons(const RowList &rows);
    QString tipOf(QWidget *widget) const;
    QStringList names() const;
    QString note() const { return m_form->findChild<TableNote *>()->text(); }
    QStringList noteLines() const
    {
        const QString tip = m_form->findChild<TableNote *>()->toolTip();
        return QTextDocumentFragment::fromHtml(tip).toPlainText().split('\n');
    }

    QPointer<QPushButton> m_below;
};

void TestParameterRows::cleanup()
{
    QToolTip::hideText();
    QApplication::clipboard()->clear();
    ParameterFormTest::cleanup();
}

void TestParameterRows::showWithButtons(const RowList &rows)
{
    make(ParameterVariant::modbus());
    auto *column = new QVBoxLayout(m_form);
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
    QTest::newRow("r") << "r";
    QTest::newRow("rw") << "rw";
}

void TestParameterRows::typedEntryIsSelectedInTheOpenList()
{
    QFETCH(QString, typed);
    RUN(showWithButtons({{"0", "a", "bool", "1", "r"}}));
    QComboBox *permissions = list(0, Permissions);
    permissions->showPopup();
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
    QTimer::singleShot(0, [this] { delete std::exchange(m_form, nullptr); });
    if (all) {
        form->removeAllParameters();
    } else {
        form->removeParameter();
    }
    QVERIFY(!form);
}

QTEST_MAIN(TestParameterRows)
#include "tst_parameterrows.moc"

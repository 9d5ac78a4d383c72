#include "parameterformtest.h"

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
    QStringList names() const;

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

QStringList TestParameterRows::names() const
{
    QStringList names;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        names.append(m_table->text(row, Name));
    }
    return names;
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

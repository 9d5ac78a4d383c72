#include "mainwindow/cmainwindow.h"
#include "run.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>

namespace {

// The visible texts and tool tips of buttons and labels, and the texts of menus, that read as English.
class EnglishTexts : public QStringList
{
public:
    void look(const QString &text)
    {
        static const QRegularExpression word("[A-Za-z]{3,}");
        if (word.match(text.section(QLatin1Char('\t'), 0, 0)).hasMatch()) { // behind it stands a shortcut
            append(text);
        }
    }
    void lookInto(const QMenu *menu)
    {
        const auto actions = menu->actions();
        QVERIFY(!actions.isEmpty());
        for (const QAction *action : actions) {
            look(action->text());
        }
    }
    void lookInto(const QWidget *widget)
    {
        const auto buttons = widget->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons) {
            look(button->text());
            look(button->toolTip());
        }
        const auto labels = widget->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            look(label->text());
        }
    }
};

} // namespace

// What the libraries say of themselves, in a window that speaks Chinese.
class TestToolkitTexts : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_window.reset(new CMainWindow); }
    void cleanupTestCase() { m_window.reset(); }

    void aQuestionIsAnsweredInChinese();
    void fileDialogsAreChinese_data();
    void fileDialogsAreChinese();
    void menusOfFieldsAreChinese();
    void titleBarsOfDocksAreChinese();

private:
    QScopedPointer<CMainWindow> m_window; // which loads the language
};

void TestToolkitTexts::aQuestionIsAnsweredInChinese()
{
    const QMessageBox box(QMessageBox::Question, QString(), QString(),
                          QMessageBox::Ok | QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    QCOMPARE(box.button(QMessageBox::Ok)->text(), "确定");
    QCOMPARE(box.button(QMessageBox::Yes)->text(), "是(&Y)");
    QCOMPARE(box.button(QMessageBox::No)->text(), "否(&N)");
    QCOMPARE(box.button(QMessageBox::Cancel)->text(), "取消");
}

void TestToolkitTexts::fileDialogsAreChinese_data()
{
    QTest::addColumn<QFileDialog::AcceptMode>("accept");
    QTest::addColumn<QFileDialog::FileMode>("mode");
    QTest::newRow("open") << QFileDialog::AcceptOpen << QFileDialog::ExistingFile;
    QTest::newRow("save") << QFileDialog::AcceptSave << QFileDialog::AnyFile;
    QTest::newRow("folder") << QFileDialog::AcceptOpen << QFileDialog::Directory;
}

void TestToolkitTexts::fileDialogsAreChinese()
{
    QFETCH(QFileDialog::AcceptMode, accept);
    QFETCH(QFileDialog::FileMode, mode);
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(accept);
    dialog.setFileMode(mode);
    dialog.show();
    EnglishTexts english;
    RUN(english.lookInto(&dialog));
    english.look(dialog.windowTitle());
    QCOMPARE(english.join(QLatin1Char('\n')), QString());
}

void TestToolkitTexts::menusOfFieldsAreChinese()
{
    QLineEdit edit;
    const QScopedPointer<QMenu> menu(edit.createStandardContextMenu());
    EnglishTexts english;
    RUN(english.lookInto(menu.data()));
    QCOMPARE(english.join(QLatin1Char('\n')), QString());
}

void TestToolkitTexts::titleBarsOfDocksAreChinese()
{
    int bars = 0;
    EnglishTexts english;
    const auto frames = m_window->findChildren<QFrame *>();
    for (const QFrame *frame : frames) {
        if (frame->inherits("ads::CDockAreaTitleBar")) {
            ++bars;
            RUN(english.lookInto(frame));
        }
    }
    QCOMPARE(bars, 3);
    QCOMPARE(english.join(QLatin1Char('\n')), QString());
}

QTEST_MAIN(TestToolkitTexts)
#include "tst_toolkittexts.moc"

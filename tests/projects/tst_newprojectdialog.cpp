#include "projects/newprojectdialog.h"

#include "inputdialogs.h"
#include "logtail.h"
#include "looks.h"
#include "messages.h"
#include "modaldialogs.h"
#include "projectdump.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

class TestNewProjectDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void opensEmptyAndWithAReadOnlyPath();
    void carriesItsIcons();
    void browsingFillsThePath();
    void cancelledBrowsingLeavesThePath();
    void refusesWithoutNameOrPath_data();
    void refusesWithoutNameOrPath();
    void reportsThePlainTextAndCloses();
    void enterCreatesAndEscapeCancels();
    void descriptionTakesPlainTextOnly();
    void labelsAreBuddies();
    void tabOrderFollowsTheForm();
    void writesItsLifeToTheLog();

private:
    template <typename Widget> Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }

    QScopedPointer<NewProjectDialog> m_dialog;
    QScopedPointer<QSignalSpy> m_created;
};

void TestNewProjectDialog::init()
{
    m_dialog.reset(new NewProjectDialog);
    m_created.reset(new QSignalSpy(m_dialog.data(), &NewProjectDialog::projectCreated));
    m_dialog->show();
}

void TestNewProjectDialog::cleanup()
{
    m_created.reset();
    m_dialog.reset();
}

void TestNewProjectDialog::opensEmptyAndWithAReadOnlyPath()
{
    QCOMPARE(m_dialog->windowTitle(), "New Project");
    QCOMPARE(child<QLineEdit>("name")->text(), QString());
    QCOMPARE(child<QLineEdit>("path")->text(), QString());
    QVERIFY(child<QLineEdit>("path")->isReadOnly());
    QVERIFY(looksReadOnly(child<QLineEdit>("path")));
    QVERIFY(!looksReadOnly(child<QLineEdit>("name")));
    QCOMPARE(child<QTextEdit>("description")->toPlainText(), QString());
    QStringList buttons;
    for (const QPushButton *button : m_dialog->findChildren<QPushButton *>()) {
        buttons.append(button->text());
    }
    QCOMPARE(buttons, QStringList({"Browse", "OK", "Cancel"}));
}

void TestNewProjectDialog::carriesItsIcons()
{
    const auto image = [](const char *name) {
        const QString path = QLatin1String(":/adsdemo/images/") + QLatin1String(name);
        return QFile::exists(path) ? ProjectDump::iconBytes(path) : QByteArray("no such image");
    };
    QCOMPARE(ProjectDump::iconBytes(m_dialog->windowIcon()), image("New.png"));
    QCOMPARE(ProjectDump::iconBytes(child<QPushButton>("browseButton")->icon()), image("look.svg"));
    QCOMPARE(ProjectDump::iconBytes(child<QPushButton>("okButton")->icon()), image("ok.svg"));
    QCOMPARE(ProjectDump::iconBytes(child<QPushButton>("cancelButton")->icon()), image("cancel.svg"));
}

void TestNewProjectDialog::browsingFillsThePath()
{
    const QTemporaryDir folder;
    ModalDialogs dialogs;
    QStringList asked;
    dialogs.expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        asked = QStringList({dialog->windowTitle(), dialog->directory().path()});
        QVERIFY(dialog->testOption(QFileDialog::ShowDirsOnly));
        dialog->setDirectory(folder.path());
        dialog->selectFile(folder.path());
        static_cast<QDialog *>(dialog)->accept();
    });
    child<QPushButton>("browseButton")->click();
    QCOMPARE(asked, QStringList({"Select Directory", QDir::homePath()}));
    QCOMPARE(child<QLineEdit>("path")->text(), folder.path());
}

void TestNewProjectDialog::cancelledBrowsingLeavesThePath()
{
    child<QLineEdit>("path")->setText("/kept");
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) { dialog->close(); });
    child<QPushButton>("browseButton")->click();
    QCOMPARE(child<QLineEdit>("path")->text(), "/kept");
    QCOMPARE(dialogs.pending(), 0);
}

void TestNewProjectDialog::refusesWithoutNameOrPath_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::newRow("neither") << QString() << QString();
    QTest::newRow("no path") << "plant" << QString();
    QTest::newRow("no name") << QString() << "/tmp";
}

void TestNewProjectDialog::refusesWithoutNameOrPath()
{
    QFETCH(QString, name);
    QFETCH(QString, path);
    child<QLineEdit>("name")->setText(name);
    child<QLineEdit>("path")->setText(path);
    Messages messages;
    messages.expect();
    child<QPushButton>("okButton")->click();
    QCOMPARE(messages.told(), QStringList("Warning|Name and Path cannot be empty."));
    QCOMPARE(m_created->count(), 0);
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(child<QLineEdit>("name")->text(), name);
}

void TestNewProjectDialog::reportsThePlainTextAndCloses()
{
    QTest::keyClicks(child<QLineEdit>("name"), "a/b c");
    child<QLineEdit>("path")->setText("/somewhere");
    QTest::keyClicks(child<QTextEdit>("description"), "<b>one</b>");
    bool visibleWhenReported = false;
    connect(m_dialog.data(), &NewProjectDialog::projectCreated, this,
            [&] { visibleWhenReported = m_dialog->isVisible(); });
    child<QPushButton>("okButton")->click();
    QCOMPARE(m_created->count(), 1);
    QCOMPARE(m_created->first(), QVariantList({"a/b c", "/somewhere", "<b>one</b>"}));
    QVERIFY(visibleWhenReported);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
}

void TestNewProjectDialog::enterCreatesAndEscapeCancels()
{
    child<QLineEdit>("name")->setText("plant");
    child<QLineEdit>("path")->setText("/somewhere");
    QTest::keyClick(child<QTextEdit>("description"), Qt::Key_Return);
    QCOMPARE(m_created->count(), 0);
    QTest::keyClick(child<QLineEdit>("name"), Qt::Key_Return);
    QCOMPARE(m_created->count(), 1);
    QCOMPARE(m_created->first().at(2).toString(), "\n");
    m_dialog->show();
    QTest::keyClick(child<QLineEdit>("name"), Qt::Key_Escape);
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(m_created->count(), 1);
}

void TestNewProjectDialog::descriptionTakesPlainTextOnly()
{
    InputDialogs::comparePasteOfRichText(child<QTextEdit>("description"));
}

void TestNewProjectDialog::labelsAreBuddies()
{
    QCOMPARE(InputDialogs::buddies(*m_dialog),
             (QMap<QString, QString>{{"Name:", "name"}, {"Path:", "path"}, {"Description:", "description"}}));
}

void TestNewProjectDialog::tabOrderFollowsTheForm()
{
    QStringList order;
    const QWidget *start = child<QLineEdit>("name");
    const QWidget *widget = start;
    do {
        if (widget->focusPolicy() & Qt::TabFocus && !widget->objectName().startsWith(QLatin1String("qt_"))) {
            order.append(widget->objectName());
        }
        widget = widget->nextInFocusChain();
    } while (widget != start);
    order.removeAll(QString());
    QCOMPARE(order, QStringList({"name", "path", "browseButton", "description", "okButton", "cancelButton"}));
}

void TestNewProjectDialog::writesItsLifeToTheLog()
{
    const LogTail log("NewProjectDialog");
    {
        const NewProjectDialog dialog;
    }
    QCOMPARE(log.events(), QStringList({"NewProjectDialog: new-nuilt", "NewProjectDialog: destroyed"}));
}

QTEST_MAIN(TestNewProjectDialog)
#include "tst_newprojectdialog.moc"

#include "projects/editprojectdialog.h"

#include "inputdialogs.h"
#include "logtail.h"
#include "looks.h"
#include "messages.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTextEdit>
#include <QtTest>

class TestEditProjectDialog : public QObject
{
    Q_OBJECT
private slots:
    void showsWhatItIsGiven();
    void pathLooksReadOnlyOnEachDesktop();
    void settersReplaceWhatItShows();
    void savingReportsAndStaysOpen();
    void savingNeedsOnlyAName();
    void refusesAnEmptyName();
    void cancelRejects();
    void enterAndEscapeDoNothing();
    void descriptionTakesPlainTextOnly();
    void labelsAreBuddies();
    void writesItsEventsToTheLog();
};

template <typename Widget> static Widget *child(const QDialog &dialog, const char *name)
{
    return dialog.findChild<Widget *>(QLatin1String(name));
}

static QStringList shown(const QDialog &dialog)
{
    return {child<QLineEdit>(dialog, "name")->text(), child<QLineEdit>(dialog, "path")->text(),
            child<QTextEdit>(dialog, "description")->toPlainText()};
}

// A form of the project "plant".
class Form : public EditProjectDialog
{
public:
    Form()
        : EditProjectDialog("plant", "/there", "text")
    {
    }
};

void TestEditProjectDialog::showsWhatItIsGiven()
{
    const Form form;
    QCOMPARE(form.windowTitle(), "Edit Project");
    QCOMPARE(shown(form), QStringList({"plant", "/there", "text"}));
    QVERIFY(child<QLineEdit>(form, "path")->isReadOnly());
    QStringList buttons;
    for (const QPushButton *button : form.findChildren<QPushButton *>()) {
        buttons.append(button->text());
        QVERIFY(!button->autoDefault());
    }
    QCOMPARE(buttons, QStringList({"Save", "Cancel"}));
}

void TestEditProjectDialog::pathLooksReadOnlyOnEachDesktop()
{
    const QPalette desktop = QApplication::palette();
    const auto restore = qScopeGuard([&desktop] { QApplication::setPalette(desktop); });
    const Form form;
    const auto *path = child<QLineEdit>(form, "path");
    for (const QPalette &each : {desktop, QPalette(QColor(40, 40, 40)), desktop}) {
        QApplication::setPalette(each);
        QCOMPARE(path->palette().window(), each.window());
        QVERIFY(looksReadOnly(path));
        QVERIFY(!looksReadOnly(child<QLineEdit>(form, "name")));
    }
}

void TestEditProjectDialog::settersReplaceWhatItShows()
{
    Form form;
    form.setName("mill");
    form.setPath("/here");
    form.setDescription("<i>other</i>");
    QCOMPARE(shown(form), QStringList({"mill", "/here", "<i>other</i>"}));
}

void TestEditProjectDialog::savingReportsAndStaysOpen()
{
    Form form;
    form.show();
    const QSignalSpy modified(&form, &EditProjectDialog::projectModified);
    const QSignalSpy finished(&form, &QDialog::finished);
    child<QPushButton>(form, "saveButton")->click();
    QCOMPARE(modified.count(), 1);
    QCOMPARE(modified.first(), QVariantList({"plant", "/there", "text"}));
    QCOMPARE(finished.count(), 0);
    QVERIFY(form.isVisible());
}

void TestEditProjectDialog::savingNeedsOnlyAName()
{
    Form form;
    const QSignalSpy modified(&form, &EditProjectDialog::projectModified);
    form.setPath(QString());
    form.setDescription(QString());
    form.saveChanges();
    QCOMPARE(modified.count(), 1);
    QCOMPARE(modified.first(), QVariantList({"plant", QString(), QString()}));
}

void TestEditProjectDialog::refusesAnEmptyName()
{
    Form form;
    const QSignalSpy modified(&form, &EditProjectDialog::projectModified);
    const LogTail log("EditProjectDialog");
    form.setName(QString());
    Messages messages;
    messages.expect();
    form.saveChanges();
    QCOMPARE(messages.told(), QStringList("Warning|Name cannot be empty."));
    QCOMPARE(modified.count(), 0);
    QCOMPARE(log.events(), QStringList());
}

void TestEditProjectDialog::cancelRejects()
{
    Form form;
    const QSignalSpy rejected(&form, &QDialog::rejected);
    const QSignalSpy finished(&form, &QDialog::finished);
    child<QPushButton>(form, "cancelButton")->click();
    QCOMPARE(rejected.count(), 1);
    QCOMPARE(finished.count(), 1);
}

void TestEditProjectDialog::enterAndEscapeDoNothing()
{
    Form form;
    form.show();
    const QSignalSpy modified(&form, &EditProjectDialog::projectModified);
    const QSignalSpy finished(&form, &QDialog::finished);
    QTest::keyClick(child<QLineEdit>(form, "name"), Qt::Key_Return);
    QTest::keyClick(child<QLineEdit>(form, "name"), Qt::Key_Escape);
    QCOMPARE(modified.count(), 0);
    QCOMPARE(finished.count(), 0);
}

void TestEditProjectDialog::descriptionTakesPlainTextOnly()
{
    const Form form;
    InputDialogs::comparePasteOfRichText(child<QTextEdit>(form, "description"));
}

void TestEditProjectDialog::labelsAreBuddies()
{
    const Form form;
    QCOMPARE(InputDialogs::buddies(form),
             (QMap<QString, QString>{{"Name:", "name"}, {"Path:", "path"}, {"Description:", "description"}}));
}

void TestEditProjectDialog::writesItsEventsToTheLog()
{
    const LogTail log("EditProjectDialog");
    {
        EditProjectDialog form("plant", QString(), QString());
        form.saveChanges();
    }
    QCOMPARE(log.events(),
             QStringList({"EditProjectDialog：new-nuilt", "EditProjectDialog：save",
                          "EditProjectDialog: destroyed"}));
}

QTEST_MAIN(TestEditProjectDialog)
#include "tst_editprojectdialog.moc"

#include "standards/standardinputdialog.h"

#include "inputdialogs.h"
#include "logtail.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class tst_standardInputDialog : public QObject
{
    Q_OBJECT
private slots:
    void offersTheTwoProtocols();
    void handsOutWhatWasEntered();
    void enterAcceptsAndEscapeRejects();
    void labelsAreBuddies();
    void writesItsLifeToTheLog();
};

static QLineEdit *nameOf(const QDialog &dialog)
{
    return dialog.findChild<QLineEdit *>("name");
}

static QComboBox *protocolOf(const QDialog &dialog)
{
    return dialog.findChild<QComboBox *>("protocol");
}

void tst_standardInputDialog::offersTheTwoProtocols()
{
    const standardInputDialog dialog;
    QCOMPARE(dialog.windowTitle(), "Add Standard");
    QVERIFY(!nameOf(dialog)->validator());
    QCOMPARE(InputDialogs::entries(protocolOf(dialog)), QStringList({"DLT645", "Modbus"}));
    QCOMPARE(dialog.name(), QString());
    QCOMPARE(dialog.protocol(), "DLT645");
}

void tst_standardInputDialog::handsOutWhatWasEntered()
{
    standardInputDialog dialog;
    QTest::keyClicks(nameOf(dialog), "meter 1");
    protocolOf(dialog)->setCurrentText("Modbus");
    dialog.findChild<QPushButton *>("okButton")->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.name(), "meter 1");
    QCOMPARE(dialog.protocol(), "Modbus");
}

void tst_standardInputDialog::enterAcceptsAndEscapeRejects()
{
    standardInputDialog dialog;
    InputDialogs::compareEnterAndEscape(&dialog);
}

void tst_standardInputDialog::labelsAreBuddies()
{
    const standardInputDialog dialog;
    QCOMPARE(InputDialogs::buddies(dialog),
             (QMap<QString, QString>{{"Name:", "name"}, {"Protocol:", "protocol"}}));
}

void tst_standardInputDialog::writesItsLifeToTheLog()
{
    const LogTail log("standardInputDialog");
    {
        const standardInputDialog dialog;
    }
    QCOMPARE(log.events(), QStringList({"standardInputDialog: new-nuilt", "standardInputDialog: destroyed"}));
}

QTEST_MAIN(tst_standardInputDialog)
#include "tst_standardinputdialog.moc"

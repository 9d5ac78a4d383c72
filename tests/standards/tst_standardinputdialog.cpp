#include "standards/standardinputdialog.h"

#include "support/inputdialogs.h"
#include "support/logtail.h"

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
    return dialog.findChild<QLineEdit *>(QStringLiteral("name"));
}

static QComboBox *protocolOf(const QDialog &dialog)
{
    return dialog.findChild<QComboBox *>(QStringLiteral("protocol"));
}

void tst_standardInputDialog::offersTheTwoProtocols()
{
    const standardInputDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Add Standard"));
    QVERIFY(!nameOf(dialog)->validator());
    QCOMPARE(InputDialogs::entries(protocolOf(dialog)),
             QStringList({QStringLiteral("DLT645"), QStringLiteral("Modbus")}));
    QCOMPARE(dialog.name(), QString());
    QCOMPARE(dialog.protocol(), QStringLiteral("DLT645"));
}

void tst_standardInputDialog::handsOutWhatWasEntered()
{
    standardInputDialog dialog;
    QTest::keyClicks(nameOf(dialog), QStringLiteral("meter 1"));
    protocolOf(dialog)->setCurrentText(QStringLiteral("Modbus"));
    dialog.findChild<QPushButton *>(QStringLiteral("okButton"))->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.name(), QStringLiteral("meter 1"));
    QCOMPARE(dialog.protocol(), QStringLiteral("Modbus"));
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
             (QMap<QString, QString>{{QStringLiteral("Name:"), QStringLiteral("name")},
                                     {QStringLiteral("Protocol:"), QStringLiteral("protocol")}}));
}

void tst_standardInputDialog::writesItsLifeToTheLog()
{
    const LogTail log(QStringLiteral("standardInputDialog"));
    {
        const standardInputDialog dialog;
    }
    QCOMPARE(log.events(),
             QStringList({QStringLiteral("standardInputDialog: new-nuilt"),
                          QStringLiteral("standardInputDialog: destroyed")}));
}

QTEST_MAIN(tst_standardInputDialog)
#include "tst_standardinputdialog.moc"

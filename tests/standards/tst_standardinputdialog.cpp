#include "standards/standardinputdialog.h"

#include "support/logtail.h"

#include <QComboBox>
#include <QLabel>
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
    QStringList entries;
    for (int i = 0; i < protocolOf(dialog)->count(); ++i) {
        entries.append(protocolOf(dialog)->itemText(i));
    }
    QCOMPARE(entries, QStringList({QStringLiteral("DLT645"), QStringLiteral("Modbus")}));
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
    dialog.show();
    QTest::keyClick(nameOf(dialog), Qt::Key_Return);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    dialog.show();
    QTest::keyClick(nameOf(dialog), Qt::Key_Escape);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    dialog.show();
    dialog.setResult(QDialog::Accepted);
    dialog.findChild<QPushButton *>(QStringLiteral("cancelButton"))->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void tst_standardInputDialog::labelsAreBuddies()
{
    const standardInputDialog dialog;
    QMap<QString, QString> buddies;
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        buddies.insert(label->text(), label->buddy() ? label->buddy()->objectName() : QString());
    }
    QCOMPARE(buddies,
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

#include "plc/plcinputdialog.h"

#include "support/inputdialogs.h"
#include "support/logtail.h"
#include "support/projectdump.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestPLCInputDialog : public QObject
{
    Q_OBJECT
private slots:
    void looksAsItShould();
    void offersTheManufacturers();
    void manufacturerReplacesTheProtocols();
    void slotIsReachedByName();
    void handsOutWhatWasEntered();
    void enterAcceptsAndEscapeRejects();
    void labelsAreBuddies();
    void writesItsLifeToTheLog();
};

namespace {

QLineEdit *nameOf(const QDialog &dialog)
{
    return dialog.findChild<QLineEdit *>(QStringLiteral("name"));
}

QComboBox *list(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QComboBox *>(QLatin1String(name));
}

QString entries(const QComboBox *box)
{
    return InputDialogs::entries(box).join(QLatin1Char('|'));
}

QPushButton *button(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QLatin1String(name));
}

} // namespace

void TestPLCInputDialog::looksAsItShould()
{
    const PLCInputDialog dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Add PLC"));
    QCOMPARE(dialog.size(), QSize(500, 200));
    QCOMPARE(ProjectDump::iconBytes(dialog.windowIcon()),
             ProjectDump::iconBytes(QStringLiteral(":/adsdemo/images/PLC (2).png")));
    QVERIFY(!nameOf(dialog)->validator());
    QCOMPARE(nameOf(dialog)->text(), QString());
    QCOMPARE(button(dialog, "okButton")->text(), QStringLiteral("OK"));
    QCOMPARE(ProjectDump::iconBytes(button(dialog, "okButton")->icon()),
             ProjectDump::iconBytes(QStringLiteral(":/adsdemo/images/ok.svg")));
    QCOMPARE(button(dialog, "cancelButton")->text(), QStringLiteral("Cancel"));
    QCOMPARE(ProjectDump::iconBytes(button(dialog, "cancelButton")->icon()),
             ProjectDump::iconBytes(QStringLiteral(":/adsdemo/images/cancel.svg")));
}

void TestPLCInputDialog::offersTheManufacturers()
{
    const PLCInputDialog dialog;
    QCOMPARE(entries(list(dialog, "manufacturer")),
             QStringLiteral("Siemens|Mitsubishi|Omron|AllenBradley|XinJE|Beckhoff|Inovance|Delta"));
    QCOMPARE(dialog.plcName(), QString());
    QCOMPARE(dialog.manufacturer(), QStringLiteral("Siemens"));
    QCOMPARE(entries(list(dialog, "protocol")), QStringLiteral("S7|PPI"));
    QCOMPARE(dialog.protocol(), QStringLiteral("S7"));
}

void TestPLCInputDialog::manufacturerReplacesTheProtocols()
{
    const PLCInputDialog dialog;
    list(dialog, "protocol")->setCurrentIndex(1);
    list(dialog, "manufacturer")->setCurrentText(QStringLiteral("Omron"));
    QCOMPARE(entries(list(dialog, "protocol")), QStringLiteral("Fins|EtherNet/IP|HostLink"));
    QCOMPARE(dialog.protocol(), QStringLiteral("Fins"));
    // The same protocol in both: the first is selected all the same.
    list(dialog, "protocol")->setCurrentText(QStringLiteral("EtherNet/IP"));
    list(dialog, "manufacturer")->setCurrentText(QStringLiteral("Mitsubishi"));
    list(dialog, "protocol")->setCurrentText(QStringLiteral("FxLinks"));
    list(dialog, "manufacturer")->setCurrentText(QStringLiteral("AllenBradley"));
    QCOMPARE(entries(list(dialog, "protocol")), QStringLiteral("EtherNet/IP|DF1"));
    QCOMPARE(dialog.protocol(), QStringLiteral("EtherNet/IP"));
}

void TestPLCInputDialog::slotIsReachedByName()
{
    PLCInputDialog dialog;
    QVERIFY(
        QMetaObject::invokeMethod(&dialog, "updateModelList", Q_ARG(QString, QStringLiteral("Beckhoff"))));
    QCOMPARE(entries(list(dialog, "protocol")), QStringLiteral("Ads"));
}

void TestPLCInputDialog::handsOutWhatWasEntered()
{
    PLCInputDialog dialog;
    QTest::keyClicks(nameOf(dialog), QStringLiteral(" press 1 "));
    list(dialog, "manufacturer")->setCurrentText(QStringLiteral("Delta"));
    list(dialog, "protocol")->setCurrentText(QStringLiteral("Modbus RTU"));
    button(dialog, "okButton")->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.plcName(), QStringLiteral(" press 1 "));
    QCOMPARE(dialog.manufacturer(), QStringLiteral("Delta"));
    QCOMPARE(dialog.protocol(), QStringLiteral("Modbus RTU"));
}

void TestPLCInputDialog::enterAcceptsAndEscapeRejects()
{
    PLCInputDialog dialog;
    InputDialogs::compareEnterAndEscape(&dialog);
}

void TestPLCInputDialog::labelsAreBuddies()
{
    const PLCInputDialog dialog;
    QCOMPARE(InputDialogs::buddies(dialog),
             (QMap<QString, QString>{{QStringLiteral("PLC Name:"), QStringLiteral("name")},
                                     {QStringLiteral("Manufacturer:"), QStringLiteral("manufacturer")},
                                     {QStringLiteral("Protocol:"), QStringLiteral("protocol")}}));
}

void TestPLCInputDialog::writesItsLifeToTheLog()
{
    const LogTail log(QStringLiteral("PLCInputDialog"));
    {
        const PLCInputDialog dialog;
    }
    QCOMPARE(log.events(),
             QStringList(
                 {QStringLiteral("PLCInputDialog: new-nuilt"), QStringLiteral("PLCInputDialog: destroyed")}));
}

QTEST_MAIN(TestPLCInputDialog)
#include "tst_plcinputdialog.moc"

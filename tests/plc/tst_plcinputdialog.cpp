#include "plc/plcinputdialog.h"

#include "inputdialogs.h"
#include "logtail.h"
#include "projectdump.h"

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
    return dialog.findChild<QLineEdit *>("name");
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
    QCOMPARE(dialog.windowTitle(), "Add PLC");
    QCOMPARE(dialog.size(), QSize(500, 200));
    QCOMPARE(ProjectDump::iconBytes(dialog.windowIcon()),
             ProjectDump::iconBytes(":/adsdemo/images/PLC (2).png"));
    QVERIFY(!nameOf(dialog)->validator());
    QCOMPARE(nameOf(dialog)->text(), QString());
    QCOMPARE(button(dialog, "okButton")->text(), "OK");
    QCOMPARE(ProjectDump::iconBytes(button(dialog, "okButton")->icon()),
             ProjectDump::iconBytes(":/adsdemo/images/ok.svg"));
    QCOMPARE(button(dialog, "cancelButton")->text(), "Cancel");
    QCOMPARE(ProjectDump::iconBytes(button(dialog, "cancelButton")->icon()),
             ProjectDump::iconBytes(":/adsdemo/images/cancel.svg"));
}

void TestPLCInputDialog::offersTheManufacturers()
{
    const PLCInputDialog dialog;
    QCOMPARE(entries(list(dialog, "manufacturer")),
             "Siemens|Mitsubishi|Omron|AllenBradley|XinJE|Beckhoff|Inovance|Delta");
    QCOMPARE(dialog.plcName(), QString());
    QCOMPARE(dialog.manufacturer(), "Siemens");
    QCOMPARE(entries(list(dialog, "protocol")), "S7|PPI");
    QCOMPARE(dialog.protocol(), "S7");
}

void TestPLCInputDialog::manufacturerReplacesTheProtocols()
{
    const PLCInputDialog dialog;
    list(dialog, "protocol")->setCurrentIndex(1);
    list(dialog, "manufacturer")->setCurrentText("Omron");
    QCOMPARE(entries(list(dialog, "protocol")), "Fins|EtherNet/IP|HostLink");
    QCOMPARE(dialog.protocol(), "Fins");
    // The same protocol in both: the first is selected all the same.
    list(dialog, "protocol")->setCurrentText("EtherNet/IP");
    list(dialog, "manufacturer")->setCurrentText("Mitsubishi");
    list(dialog, "protocol")->setCurrentText("FxLinks");
    list(dialog, "manufacturer")->setCurrentText("AllenBradley");
    QCOMPARE(entries(list(dialog, "protocol")), "EtherNet/IP|DF1");
    QCOMPARE(dialog.protocol(), "EtherNet/IP");
}

void TestPLCInputDialog::slotIsReachedByName()
{
    PLCInputDialog dialog;
    QVERIFY(QMetaObject::invokeMethod(&dialog, "updateModelList", Q_ARG(QString, "Beckhoff")));
    QCOMPARE(entries(list(dialog, "protocol")), "Ads");
}

void TestPLCInputDialog::handsOutWhatWasEntered()
{
    PLCInputDialog dialog;
    QTest::keyClicks(nameOf(dialog), " press 1 ");
    list(dialog, "manufacturer")->setCurrentText("Delta");
    list(dialog, "protocol")->setCurrentText("Modbus RTU");
    button(dialog, "okButton")->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.plcName(), " press 1 ");
    QCOMPARE(dialog.manufacturer(), "Delta");
    QCOMPARE(dialog.protocol(), "Modbus RTU");
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
             (QMap<QString, QString>{
                 {"PLC Name:", "name"}, {"Manufacturer:", "manufacturer"}, {"Protocol:", "protocol"}}));
}

void TestPLCInputDialog::writesItsLifeToTheLog()
{
    const LogTail log("PLCInputDialog");
    {
        const PLCInputDialog dialog;
    }
    QCOMPARE(log.events(), QStringList({"PLCInputDialog: new-nuilt", "PLCInputDialog: destroyed"}));
}

QTEST_MAIN(TestPLCInputDialog)
#include "tst_plcinputdialog.moc"

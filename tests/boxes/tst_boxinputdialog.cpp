#include "boxes/boxinputdialog.h"

#include "inputdialogs.h"
#include "logtail.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

// The dialog that asks for a new Box.
class TestBoxInputDialog : public QObject
{
    Q_OBJECT
private slots:
    void showsNameAndAddress();
    void handsOutWhatWasTypedAndTheFirstModel();
    void modelIsBuiltAndNeverSeen();
    void addressTakesDottedNumbersOnlyAndNameTakesAll();
    void okAcceptsAndCancelRejects();
    void logsItsLife();
};

void TestBoxInputDialog::showsNameAndAddress()
{
    const BoxInputDialog dialog;
    QCOMPARE(dialog.windowTitle(), "Add Box");
    QCOMPARE(dialog.size(), QSize(500, 200));
    const auto *form = dialog.findChild<QFormLayout *>();
    QStringList rows;
    for (int row = 0; row < form->rowCount(); ++row) {
        rows.append(qobject_cast<QLabel *>(form->itemAt(row, QFormLayout::LabelRole)->widget())->text());
        rows.append(form->itemAt(row, QFormLayout::FieldRole)->widget()->objectName());
    }
    QCOMPARE(rows, (QStringList{"Box Name:", "name", "IP Address:", "ip"}));
    QCOMPARE(dialog.findChild<QPushButton *>("okButton")->text(), "OK");
    QCOMPARE(dialog.findChild<QPushButton *>("cancelButton")->text(), "Cancel");
}

void TestBoxInputDialog::handsOutWhatWasTypedAndTheFirstModel()
{
    BoxInputDialog dialog;
    QTest::keyClicks(dialog.findChild<QLineEdit *>("name"), "Gate 1");
    QTest::keyClicks(dialog.findChild<QLineEdit *>("ip"), "192.168.1.70");
    QCOMPARE(dialog.name(), "Gate 1");
    QCOMPARE(dialog.ip(), "192.168.1.70");
    QCOMPARE(dialog.model(), "MRN-GATE-70");
}

void TestBoxInputDialog::modelIsBuiltAndNeverSeen()
{
    BoxInputDialog dialog;
    dialog.show();
    const auto *model = dialog.findChild<QComboBox *>("model");
    QVERIFY(!model->isVisible());
    QCOMPARE(InputDialogs::entries(model), (QStringList{"MRN-GATE-70", "MRN-GATE-20"}));
    for (const QLayout *layout : dialog.findChildren<QLayout *>()) {
        QCOMPARE(layout->indexOf(const_cast<QComboBox *>(model)), -1);
    }
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        QCOMPARE(label->isVisible(), label->text() != QLatin1String("Model:"));
    }
}

void TestBoxInputDialog::addressTakesDottedNumbersOnlyAndNameTakesAll()
{
    BoxInputDialog dialog;
    auto *ip = dialog.findChild<QLineEdit *>("ip");
    QTest::keyClicks(ip, "192.x999.1");
    QCOMPARE(dialog.ip(), "192.99.1");
    QCOMPARE(dialog.findChild<QLineEdit *>("name")->validator(), nullptr);
}

void TestBoxInputDialog::okAcceptsAndCancelRejects()
{
    BoxInputDialog dialog;
    QSignalSpy finished(&dialog, &QDialog::finished);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Return);
    dialog.findChild<QPushButton *>("cancelButton")->click();
    dialog.findChild<QPushButton *>("okButton")->click();
    QCOMPARE(
        finished,
        (QList<QVariantList>{{int(QDialog::Accepted)}, {int(QDialog::Rejected)}, {int(QDialog::Accepted)}}));
}

void TestBoxInputDialog::logsItsLife()
{
    const LogTail log("BoxInputDialog");
    {
        const BoxInputDialog dialog;
    }
    QCOMPARE(log.events(), (QStringList{"BoxInputDialog: new-nuilt", "BoxInputDialog: destroyed"}));
}

QTEST_MAIN(TestBoxInputDialog)
#include "tst_boxinputdialog.moc"

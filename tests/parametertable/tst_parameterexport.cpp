#include "files.h"
#include "formtest.h"
#include "model/itemroles.h"
#include "parametertable/parameterform.h"
#include "plc/plceditdialog.h"
#include "standards/standardmodbuseditdialog.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTabWidget>

// What "Export" asks for and says, in the two forms that have it.
class TestParameterExport : public FormTest
{
    Q_OBJECT
public:
    TestParameterExport()
        : FormTest("Feeder 1/2", Qt::UserRole, QString())
    {
    }
private slots:
    void offersANameAndAddsTheEnding_data();
    void offersANameAndAddsTheEnding();
    void beginsInTheFolderOfTheLastFile();

private:
    // The second of two tabs, with two points.
    std::unique_ptr<standardModbusEditDialog> openModbus();
};

namespace {

const RowList twoRows{{"0", "a", "float", "1", "r"}, {"2", "b", "float", "1", "r"}};

} // namespace

std::unique_ptr<standardModbusEditDialog> TestParameterExport::openModbus()
{
    auto form = std::make_unique<standardModbusEditDialog>(m_item, m_workspace);
    form->addTab();
    form->addTab();
    form->findChild<QTabWidget *>()->setCurrentIndex(1);
    form->loadParameters(twoRows);
    return form;
}

void TestParameterExport::offersANameAndAddsTheEnding_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QString>("offered");
    QTest::newRow("PLC") << false << "Feeder 1_2.csv";
    QTest::newRow("Modbus") << true << "Feeder 1_2 Modbus-2.csv";
}

void TestParameterExport::offersANameAndAddsTheEnding()
{
    QFETCH(bool, modbus);
    QFETCH(QString, offered);
    const auto form = modbus ? std::unique_ptr<ParameterForm>(openModbus())
                             : std::unique_ptr<ParameterForm>(new PLCEditDialog(m_item, m_workspace));
    const QString path = QDir::current().filePath(QLatin1String(QTest::currentDataTag()));
    m_dialogs->expect([&](QWidget *dialog) {
        auto *name = dialog->findChild<QLineEdit *>("fileNameEdit");
        QCOMPARE(name->text(), offered);
        name->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    click(*form, "exportButton");
    QVERIFY(Files::contents(path + ".csv").startsWith("Address,Name,"));
    QVERIFY(!QFile::exists(path));
}

void TestParameterExport::beginsInTheFolderOfTheLastFile()
{
    const QString folder = QDir::current().filePath("lists");
    QVERIFY(QDir().mkpath(folder));
    const auto form = openModbus();
    m_dialogs->expect([&](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(folder + "/first");
        QMetaObject::invokeMethod(dialog, "accept");
    });
    click(*form, "exportButton");
    for (const char *button : {"importButton", "exportButton"}) {
        m_dialogs->expect([&](QWidget *dialog) {
            QCOMPARE(qobject_cast<QFileDialog *>(dialog)->directory().path(), folder);
            dialog->close();
        });
        click(*form, button);
    }
}

QTEST_MAIN(TestParameterExport)
#include "tst_parameterexport.moc"

#include "logtail.h"
#include "parameterformtest.h"

#include <QApplication>

// The form around a parameter table: its slots, what they log, and its end.
class TestParameterForm : public ParameterFormTest
{
    Q_OBJECT
private slots:
    void slotsAreFoundByName_data();
    void slotsAreFoundByName();
    void operationsAreLogged();
    void nothingIsToldByAFormThatGoes();
};

void TestParameterForm::slotsAreFoundByName_data()
{
    QTest::addColumn<QByteArray>("signature");
    for (const char *signature :
         {"addParameter()", "removeParameter()", "removeAllParameters()", "importParameters()",
          "exportParameters()", "loadParameters(QList<QVariantList>)", "validateLength(int,int)",
          "validateName(int,int)", "validateNameOnChange(int,int,QString)", "validateAddr(int,int)",
          "validateAddrOnChange(int,int,QString)", "validateChange(int,int)",
          "validateChangeOnChange(int,int,QString)", "validateFormula(int,int)",
          "validateFormulaOnChange(int,int,QString)", "eventFilter(QObject*,QEvent*)",
          "updateChangeAmplitudeCell(int,bool)", "updateloadChangeAmplitudeCell(int,bool)"}) {
        QTest::newRow(signature) << QByteArray(signature);
    }
}

void TestParameterForm::slotsAreFoundByName()
{
    QFETCH(QByteArray, signature);
    const int slot = m_form->metaObject()->indexOfSlot(signature);
    QVERIFY(slot >= 0);
    QCOMPARE(m_form->metaObject()->method(slot).access(), QMetaMethod::Public);
}

void TestParameterForm::operationsAreLogged()
{
    const LogTail log("PLCEditDialog");
    m_form->addParameter();
    m_form->removeParameter();
    m_form->exportFile("out.csv");
    m_form->removeAllParameters();
    m_form->importFile("out.csv");
    QStringList expected;
    for (const char *event : {"addParameter", "removeParameter", "exportParameters", "removeAllParameters",
                              "loadParameters", "importParameters"}) {
        expected.append("PLCEditDialog: " + QLatin1String(event));
    }
    QCOMPARE(log.events(), expected);
}

void TestParameterForm::nothingIsToldByAFormThatGoes()
{
    m_form->loadParameters({plcRow("1", "a"), plcRow("2", "b")});
    m_form->addParameter();
    m_form->show();
    QApplication::setActiveWindow(m_form);
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    for (QLineEdit *cell : {editor(0, Length), editor(2, Address)}) {
        cell->setEnabled(true);
        cell->setText("x y");
    }
    editor(2, Address)->setFocus();
    editor(0, Length)->setFocus(); // ends the editing of the address
    QCOMPARE(m_workspace->messages.size(), 1);
    delete m_form;
    m_form = nullptr;
    QCOMPARE(m_messages->told(), QStringList());
    QCOMPARE(m_workspace->messages.size(), 1);
}

QTEST_MAIN(TestParameterForm)
#include "tst_parameterform.moc"

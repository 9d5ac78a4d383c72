#pragma once

#include "formtest.h"
#include "parametertable/parameterform.h"
#include "parametertable/parametertable.h"

#include <QComboBox>
#include <QLineEdit>

// What the tests of the parameter table share: rows as they are stored, and a table in a form that the test
// types into.

enum Column { Address, Name, Type, Length, Permissions, Method, Amplitude, Collection, Write, Button };

inline QVariantList plcRow(const QString &address, const QString &name, const QString &method = "Timed",
                           const QString &amplitude = QString(""))
{
    return {address, name, "int16", "1", "r", method, amplitude, "X*2", "X/2"};
}

inline QVariantList modbusRow(const QString &address, const QString &name)
{
    return {address, name, "float", "1", "rw"};
}

// A form whose tables the test chooses.
class FormUnderTest : public ParameterForm
{
public:
    FormUnderTest(const ParameterVariant &variant, Workspace *workspace, ParameterTable *&current,
                  ParameterTable *&latest)
        : ParameterForm({variant.form, "'%1' is saved."}, variant, nullptr, workspace, nullptr)
        , m_current(current)
        , m_latest(latest)
    {
    }
    using ParameterForm::makeTable;
    using ParameterForm::makeTableButtons;

protected:
    ParameterTable *currentTable() const override { return m_current; }
    ParameterTable *latestTable() const override { return m_latest; }
    QString missingTableText() const override { return "No tab selected."; }

private:
    ParameterTable *&m_current;
    ParameterTable *&m_latest;
};

class ParameterFormTest : public FormTest
{
protected:
    ParameterFormTest()
        : FormTest(QString(), Qt::UserRole, QString())
    {
    }

    // A new empty table of the variant in place of the last one.
    void make(const ParameterVariant &variant)
    {
        delete m_form;
        m_form = new FormUnderTest(variant, m_workspace, m_table, m_latest);
        m_table = m_form->makeTable(m_form);
        m_latest = m_table;
    }

    void init() override
    {
        FormTest::init();
        make(ParameterVariant::plc());
    }
    void cleanup() override
    {
        delete m_form;
        m_form = nullptr;
        FormTest::cleanup();
    }

    QLineEdit *editor(int row, int column) const { return m_table->editor(row, column); }
    QComboBox *list(int row, int column) const { return m_table->list(row, column); }
    // Types into an editor and ends the editing.
    void type(int row, int column, const QString &text) const
    {
        QLineEdit *cell = editor(row, column);
        cell->setText(text);
        emit cell->editingFinished();
    }
    void edit(int row, int column, const QString &text) const { m_table->item(row, column)->setText(text); }

    FormUnderTest *m_form = nullptr;
    ParameterTable *m_table = nullptr;
    ParameterTable *m_latest = nullptr;
};

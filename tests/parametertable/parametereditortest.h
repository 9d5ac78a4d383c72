#pragma once

#include "parametertable/parametereditor.h"
#include "support/messageboxes.h"
#include "support/workspacefake.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

// What the tests of the parameter table share: rows as they are stored, and a table in a form that the test
// types into.

enum Column { Address, Name, Type, Length, Permissions, Method, Amplitude, Collection, Write, Button };

inline QVariantList plcRow(const QString &address, const QString &name,
                           const QString &method = QStringLiteral("Timed"),
                           const QString &amplitude = QString(QLatin1String("")))
{
    return {address, name,      QStringLiteral("int16"), QStringLiteral("1"),  QStringLiteral("r"),
            method,  amplitude, QStringLiteral("X*2"),   QStringLiteral("X/2")};
}

inline QVariantList modbusRow(const QString &address, const QString &name)
{
    return {address, name, QStringLiteral("float"), QStringLiteral("1"), QStringLiteral("rw")};
}

class ParameterEditorTest : public QObject
{
    // No Q_OBJECT: the slots are those of the test.
protected:
    void setUp()
    {
        m_workspace = new WorkspaceFake;
        m_boxes = new MessageBoxes(this);
        make(ParameterVariant::plc());
    }
    void tearDown()
    {
        QCOMPARE(m_boxes->unexpected(), QStringList());
        QCOMPARE(m_boxes->pending(), 0);
        delete m_form;
        m_form = nullptr;
        delete m_boxes;
        delete m_workspace;
    }

    // A new empty table of the variant in place of the last one.
    void make(const ParameterVariant &variant)
    {
        delete m_form;
        m_form = new QDialog;
        m_table = new QTableWidget(m_form);
        m_latest = m_table;
        m_editor = new ParameterEditor(
            variant, m_form, m_workspace, [this] { return m_table; }, [this] { return m_latest; });
        m_editor->prepare(m_table);
    }

    QLineEdit *editor(int row, int column) const
    {
        return qobject_cast<QLineEdit *>(m_table->cellWidget(row, column));
    }
    QComboBox *list(int row, int column) const
    {
        return qobject_cast<QComboBox *>(m_table->cellWidget(row, column));
    }
    // Types into an editor and ends the editing.
    void type(int row, int column, const QString &text) const
    {
        QLineEdit *cell = editor(row, column);
        cell->setText(text);
        emit cell->editingFinished();
    }
    void edit(int row, int column, const QString &text) const { m_table->item(row, column)->setText(text); }

    QDialog *m_form = nullptr;
    QTableWidget *m_table = nullptr;
    QTableWidget *m_latest = nullptr;
    ParameterEditor *m_editor = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    MessageBoxes *m_boxes = nullptr;
};

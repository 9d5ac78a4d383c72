#pragma once

#include "forms/definitionform.h"
#include "model/projecttree.h"
#include "parameters/parametervariant.h"

#include <functional>

class ParameterTable;
class QLineEdit;
class QTableWidgetItem;
class TableNote;

// Base of the forms that have a table of parameters, or one in each tab: its buttons, its CSV and what is
// checked at the end of an editing. A check clears its cell and says so in the "Message" dock, but for those
// of lengths and amplitudes, which tell it; the rules are those of the variant.
class ParameterForm : public DefinitionForm
{
    Q_OBJECT
public:
    // The flows behind the file dialogs.
    void importFile(const QString &path);
    void exportFile(const QString &path);
    // As addParameter(), and what is typed next goes into the new row.
    void startParameter();

public slots:
    // Appends a row to the current table.
    void addParameter();
    // Compat: removes the current row, also when the button of another row was pressed.
    void removeParameter();
    void removeAllParameters();
    // Replaces the rows of the current table; tells when there is none.
    void loadParameters(const QList<QVariantList> &rows);
    // Both do nothing where the variant has no CSV.
    void importParameters();
    void exportParameters();

    // Checks of items, at cellChanged; each acts on its own columns only.
    void validateName(int row, int column);
    void validateAddr(int row, int column);
    void validateChange(int row, int column);
    void validateFormula(int row, int column);
    void validateLength(int row, int column);

    // An editor of an added row was changed: from now on each end of its editing runs the check. Where the
    // variant has names checked while they are typed, the check of a name runs at once.
    void validateNameOnChange(int row, int column, QString newName);
    // Compat: watches the editor in the table that was made last, also for an edit in another tab.
    void validateAddrOnChange(int row, int column, QString newName);
    void validateChangeOnChange(int row, int column, QString newName);
    void validateFormulaOnChange(int row, int column, QString newName);

    // The amplitude's cell: the editor of an added row, the item of a loaded one.
    void updateChangeAmplitudeCell(int row, bool enabled);
    void updateloadChangeAmplitudeCell(int row, bool enabled);

protected:
    ParameterForm(const Names &names, const ParameterVariant &variant, QStandardItem *item,
                  Workspace *workspace, QWidget *parent);

    // The table that the user works on, and the one that was made last; null if there is none.
    virtual ParameterTable *currentTable() const = 0;
    virtual ParameterTable *latestTable() const { return currentTable(); }
    // What a file for the rows of the current table may be called, without ending.
    virtual QString exportName() const;
    // What to say when rows are to be loaded and there is no current table.
    virtual QString missingTableText() const { return {}; }

    ParameterTable *makeTable(QWidget *parent);
    // Before the table loses rows or goes: the check of a cell that is being typed into may tell a message,
    // and must not do so in the middle of that. False if the form or the table went meanwhile; true without
    // a table.
    bool endEditing(ParameterTable *table);
    // The buttons that work on the current table; they stand on the page of theirs.
    QWidget *makeTableButtons(QWidget *parent);

private:
    QTableWidgetItem *itemOf(int row, int column) const;
    QLineEdit *editorOf(const ParameterTable *table, int row, int column) const;
    QStringList names(bool trimmed) const;
    void checkItem(int row, int column, std::initializer_list<ParameterCell> cells);

    void onEdited(QLineEdit *editor, int row, ParameterCell cell);
    void watch(QLineEdit *editor, int row, ParameterCell cell);
    void check(QLineEdit *editor, int row, ParameterCell cell);
    void checkName(QLineEdit *editor, int row);
    void checkLength(QLineEdit *editor);
    void checkThreshold(QLineEdit *editor);

    void tell(const char *source, int row);
    // Into the line below the buttons of the current table, if there is one.
    void note(const std::function<void(TableNote *)> &told);
    void warn(const char *title, const char *source);
    // For the editors, whose messages take the focus and so end another editing: says nothing, and
    // returns false, while such a message is open. The editor may be gone afterwards.
    bool warnOnce(const char *source);

    const ParameterVariant &m_variant;
    bool m_warning = false; // a message of warnOnce() is open
    // Receives for the checks: hiding the form ends an editing, and at the form's end that is too late.
    QObject m_checks;
};

#pragma once

#include "model/projecttree.h"
#include "parameters/parametervariant.h"

#include <QIcon>
#include <QObject>

#include <functional>

class QComboBox;
class QLineEdit;
class QTableWidget;
class QTableWidgetItem;
class QWidget;
class Workspace;

// The parameter table of a form: rows, cell rules and CSV, for one table or for a table in each tab. The
// table is the record: a row is what its cells show. The variant says which columns it has.
//
// Two kinds of row differ on purpose. A row that "Add" made has a widget in every cell, and its handlers keep
// the row number of its creation. A row that was loaded, from the item or from a file, has plain items for
// address, name and formulas, checked under their present row numbers.
class ParameterEditor : public QObject
{
    Q_OBJECT
public:
    using Lookup = std::function<QTableWidget *()>;

    // The form watches the wheel of each list and is the parent of boxes; current is the table that the user
    // works on, latest the one that was made last (the same where a form has one table). Both may give null.
    ParameterEditor(const ParameterVariant &variant, QWidget *form, Workspace *workspace, Lookup current,
                    Lookup latest);

    // What to say in a box when rows are to be loaded and there is no current table.
    void setMissingText(std::function<QString()> text) { m_missing = std::move(text); }

    // Columns, widths, style and checks of a new table.
    void prepare(QTableWidget *table);
    // The row of buttons that work on the current table: "Add" and "Remove All", and where there is CSV
    // "Import" and "Export".
    QWidget *makeButtons(QWidget *parent);

    // Appends a row to the current table.
    void addParameter();
    // Removes the current row: on purpose not the row whose button was pressed, if another one is current.
    void removeParameter();
    void removeAllParameters();
    // Replaces the rows of the current table; says in a box when there is none.
    void loadParameters(const RowList &rows);
    // Replaces the rows of a table; runs no check and raises no message.
    void fill(QTableWidget *table, const RowList &rows);
    // The rows as they are stored.
    RowList rows(const QTableWidget *table) const;

    void importParameters();
    void exportParameters();
    // The flows behind the file dialogs.
    void importFile(const QString &path);
    void exportFile(const QString &path);

    // Checks of items, at cellChanged; each acts on its own columns only.
    void validateName(int row, int column);
    void validateAddr(int row, int column);
    void validateFormula(int row, int column);
    void validateLength(int row, int column);
    void validateChange(int row, int column);

    // An editor of an added row was changed: from now on each end of its editing runs the check.
    void validateNameOnChange(int row, int column);
    // In the table made last, on purpose: in another tab it is the editor of that row, if any, that is
    // watched.
    void validateAddrOnChange(int row, int column);
    void validateFormulaOnChange(int row, int column);
    void validateChangeOnChange(int row, int column);

    // The amplitude's cell: the editor of an added row, the item of a loaded one.
    void updateChangeAmplitudeCell(int row, bool enabled);
    void updateloadChangeAmplitudeCell(int row, bool enabled);

signals:
    // A row was added or loaded and shows its values: a form may connect cells that act on one another.
    void rowMade(QTableWidget *table, int row);

private:
    using Check = void (ParameterEditor::*)(int row, QLineEdit *editor);

    // The cells of a row that act on one another; null where the row has none.
    struct RowParts {
        QLineEdit *address = nullptr;
        QLineEdit *name = nullptr;
        QComboBox *type = nullptr;
        QLineEdit *length = nullptr;
        QComboBox *method = nullptr;
        QLineEdit *amplitude = nullptr;
        QLineEdit *formulas[2] = {nullptr, nullptr};
    };

    void appendAddedRow(QTableWidget *table);
    void fillLoadedRow(QTableWidget *table, int row, const QVariantList &values);
    static QTableWidgetItem *makeSpatialIndex(const QString &text);
    void addButton(QTableWidget *table, int row);
    QWidget *makeEditor(QTableWidget *table, ParameterCell cell, const QString &value, RowParts *parts);
    QWidget *makeList(QTableWidget *table, ParameterCell cell, const QString &value, RowParts *parts);
    void connectAddedRow(int row, const RowParts &parts);
    void connectLoadedRow(const RowParts &parts);
    void connectTypeAndLength(const RowParts &parts);
    void watchName(QLineEdit *editor, int row);
    void checkAtEndOfEditing(QLineEdit *editor, int row, Check check);

    void checkName(int row, QLineEdit *editor);
    void checkAddress(int row, QLineEdit *editor);
    void checkFormula(int row, QLineEdit *editor);
    void checkAmplitude(int row, QLineEdit *editor);
    void checkLength(QLineEdit *editor);
    void checkNumber(QLineEdit *editor);

    static bool isCount(const QString &text); // a decimal integer of at least 1
    bool addressPasses(int row, const QString &text);
    bool formulaPasses(int row, const QString &text);
    bool amplitudePasses(int row, const QString &text);
    bool commaPasses(const QString &text);
    int rowWithName(const QTableWidget *table, int except, const QString &name, bool trimmed) const;
    bool isFormula(int column) const;

    void tell(const char *source, int row);
    void warn(const char *source);
    // The same for the editors, whose boxes take the focus and so end another editing: says nothing, and
    // returns false, while such a box stands. The editor may be gone afterwards.
    bool warnOnce(const char *source);
    void log(const char *operation) const;

    const ParameterVariant &m_variant;
    QWidget *m_form;        // Not owned.
    Workspace *m_workspace; // Not owned; may be null.
    QIcon m_deleteIcon;
    Lookup m_current;
    Lookup m_latest;
    std::function<QString()> m_missing;
    bool m_warning = false; // a box of warnOnce() stands
};

// What a cell shows: its item's, its editor's or its list's text; null where there is none of these, as for
// the button, unless an item lies under it.
QString parameterCellText(const QTableWidget *table, int row, int column);

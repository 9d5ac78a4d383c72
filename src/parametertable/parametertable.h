#pragma once

#include "model/projecttree.h"
#include "parameters/parametervariant.h"
#include "parametertable/widgettable.h"

#include <QIcon>

class QComboBox;
class QLineEdit;

// A table of parameters. It is the record: a row is what its cells show.
//
// Compat: two kinds of row differ. A row that was added has a widget in every cell, and tells of its
// editors under the row number of its creation. A row that was loaded, from the item or from a file, has
// plain items for address, name and formulas, of which cellChanged() tells under their present row numbers.
class ParameterTable : public WidgetTable
{
    Q_OBJECT
public:
    // The filter, not owned, sees the events of each list.
    ParameterTable(const ParameterVariant &variant, QObject *listFilter, QWidget *parent);

    void appendRow();
    // Brings the cursor into the first cell of the row, and that into sight when something is typed. The
    // current row stays.
    void typeInto(int row);
    // Replaces the rows; tells of no change.
    void fill(const RowList &rows);
    // Adds rows below the others, as if they had been loaded with them; tells of no change.
    void append(const RowList &rows);
    // Has the editor of a cell that is being typed into finish, which may tell a message: form and table may
    // be gone afterwards.
    void endEditing();

    // The rows as they are stored, and as they are shown.
    RowList rows() const;
    QList<QStringList> texts() const;
    QStringList texts(int row) const;
    // What a cell shows: its item's, its editor's or its list's text; null where there is none of these, as
    // for the button, unless an item lies under it.
    QString text(int row, int column) const;

    // The widget of a cell, or null.
    QLineEdit *editor(int row, int column) const;
    QComboBox *list(int row, int column) const;

signals:
    // A row was added or loaded and shows its values: a form may connect cells that act on one another.
    void rowMade(int row);
    // The text of an added row's editor has changed; the row is that of its creation.
    void edited(QLineEdit *editor, int row, ParameterCell cell);
    // The editing of a length has ended, and of a loaded row's amplitude.
    void lengthEntered(QLineEdit *editor);
    void amplitudeEntered(QLineEdit *editor);
    void removePressed();
    // At the place on the screen.
    void menuRequested(const QPoint &place);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class RowKind { Added, Loaded };

    void setUpColumns();
    void fillRow(int row, const QVariantList &values);
    static QTableWidgetItem *makeSpatialIndex(const QString &text);
    QString removalText() const;
    QWidget *makeButton();
    QWidget *makeWidget(ParameterCell cell, const QString &value);
    QLineEdit *makeEditor(ParameterCell cell, const QString &value);
    QComboBox *makeList(ParameterCell cell, const QString &value);
    void connectEditors(int row);
    void connectLength(int row, RowKind kind);
    void connectAmplitude(int row, RowKind kind);

    const ParameterVariant &m_variant;
    QObject *m_listFilter;
    QIcon m_deleteIcon;
};

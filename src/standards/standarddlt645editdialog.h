#pragma once

#include "forms/definitionform.h"
#include "model/projecttree.h"

class MeterPage;
class QTableWidget;
class StandardTabs;

// The form of a Standard of protocol "DLT645": one serial line, and a tab for each meter on it with its
// address, its edition of DL/T 645 and the items ticked for reading. "Save" is connected by the main window.
class standardDLT645EditDialog : public DefinitionForm
{
    Q_OBJECT
public:
    // Writes the text defaults into the item's empty roles.
    standardDLT645EditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
    // Appends a tab with the 2007 items and the next number; it does not become the current one.
    void addTab();
    // Fills the tab of that title, made if missing: row 0 holds slave address and edition, each further row,
    // by position, a tick, an item label and the user's name. Without any row the tab keeps its settings.
    void loadTab(QString title, QList<QVariantList> rows);

    QLineEdit *nameEdit() const;

public slots:
    // Clears a name that another row of the sender's table has, and says so.
    void validateName(int row, int column);
    bool isNameDuplicate(QTableWidget *table, int currentRow, QString currentName);
    // Ticks all rows of the current tab, or none if all were ticked; for the first column only.
    void toggleSelectAll(int logicalIndex);
    void deleteTab(int index);
    // Appends a tab with what the tab shows and makes it the current one.
    void duplicateTab(int index);
    // Fills the current tab's table with the items of its edition; ticks and names go.
    void updateParameterTable(int index);

private:
    QWidget *buildContent();
    MeterPage *makePage();
    // Null without a tab that has its table.
    MeterPage *currentPage() const;

    FieldGroup m_fields;
    CustomPart m_stored; // the tabs
    TextField *m_name = nullptr;
    StandardTabs *m_tabs = nullptr;
    bool m_clearingName = false;
};

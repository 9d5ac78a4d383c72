#pragma once

#include "forms/editform.h"
#include "forms/fieldtable.h"
#include "model/itemref.h"
#include "model/projecttree.h"
#include "parametertable/parametereditor.h"

#include <QPointer>

class QGroupBox;
class QPushButton;
class QStandardItem;
class QTableWidget;
class StandardTabs;
class Workspace;

// The form of a Standard of protocol "Modbus": one link, TCP or serial, and a tab for each slave on it with
// its station number, byte order and parameter table. "Save" is connected by the main window.
class standardModbusEditDialog : public EditForm
{
    Q_OBJECT
public:
    // Writes defaults into the item's empty roles. The tabs appear once the event loop has run.
    standardModbusEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
    ~standardModbusEditDialog() override;

    // Shows another Standard at once, tabs included; what was typed and not saved is overwritten.
    void replaceItem(QStandardItem *item);
    // Appends an empty tab with the next number; it does not become the current one.
    void addTab();
    // Fills the tab of that title, made if missing; row 0 holds series, station number, byte order and the
    // two flags, each further row a parameter of five texts.
    void loadTab(QString title, QList<QVariantList> rows);

    void addParameter();
    void removeParameter();
    void removeAllParameters();
    void loadParameters(const QList<QVariantList> &rows);
    void importParameters();
    void exportParameters();

    QLineEdit *nameEdit() const;
    QPushButton *saveButton() const { return m_save; }

public slots:
    void saveChanges();
    void clearData();
    void validateName(int row, int column);
    void validateNameOnChange(int row, int column, QString newName);
    void validateAddr(int row, int column);
    void validateAddrOnChange(int row, int column, QString newName);
    void validateChange(int row, int column);
    void validateChangeOnChange(int row, int column, QString newName);
    void validateFormula(int row, int column);
    void validateFormulaOnChange(int row, int column, QString newName);
    void validateLength(int row, int column);
    // The guard against the wheel, which may be called by name here.
    bool eventFilter(QObject *obj, QEvent *event) override;
    void deleteTab(int index);
    void onProtocolChanged(QString protocol);
    void updateChangeAmplitudeCell(int row, bool enabled);
    void updateloadChangeAmplitudeCell(int row, bool enabled);

private:
    QWidget *buildContent();
    void alignFields();
    QWidget *makePage(const QString &title);
    void fillFields();
    void loadTabs();
    QTableWidget *currentTable() const;
    RowList rowsOf(const QWidget *page) const;

    ItemRef m_item;
    Workspace *m_workspace; // Not owned; may be null.
    FieldTable m_identity;
    FieldTable m_network;
    FieldTable m_serial;
    FieldTable m_trigger;
    ParameterEditor *m_parameters;
    QGroupBox *m_networkGroup = nullptr;
    QGroupBox *m_serialGroup = nullptr;
    StandardTabs *m_tabs = nullptr;
    QPushButton *m_save = nullptr;
    QPointer<QTableWidget> m_latestTable; // of the tab made last
    int m_fieldColumn = 0;                // left edge of the fields in the content, pixels
    bool m_tabsLoaded = false;            // by the timer of the constructor, or before it by replaceItem
};

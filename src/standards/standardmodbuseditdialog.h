#pragma once

#include "forms/fieldtable.h"
#include "model/itemref.h"
#include "parametertable/parameterform.h"

#include <QPointer>

class ModbusPage;
class QGroupBox;
class QPushButton;
class QStandardItem;
class StandardTabs;

// The form of a Standard of protocol "Modbus": one link, TCP or serial, and a tab for each slave on it with
// its station number, byte order and parameter table. "Save" is connected by the main window.
class standardModbusEditDialog : public ParameterForm
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

    QLineEdit *nameEdit() const;
    QPushButton *saveButton() const { return m_save; }

public slots:
    void saveChanges();
    void clearData();
    void deleteTab(int index);
    void onProtocolChanged(QString protocol);

protected:
    ParameterTable *currentTable() const override;
    ParameterTable *latestTable() const override;
    QString missingTableText() const override;

private:
    QWidget *buildContent();
    void alignFields();
    ModbusPage *makePage(const QString &title);
    void fillFields();
    void loadTabs();

    ItemRef m_item;
    FieldTable m_identity;
    FieldTable m_network;
    FieldTable m_serial;
    FieldTable m_trigger;
    QGroupBox *m_networkGroup = nullptr;
    QGroupBox *m_serialGroup = nullptr;
    StandardTabs *m_tabs = nullptr;
    QPushButton *m_save = nullptr;
    QPointer<ParameterTable> m_latestTable; // of the tab made last
    int m_fieldColumn = 0;                  // left edge of the fields in the content, pixels
    bool m_tabsLoaded = false;              // by the timer of the constructor, or before it by replaceItem
};

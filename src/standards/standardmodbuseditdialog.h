#pragma once

#include "forms/fieldframe.h"
#include "parametertable/parameterform.h"

#include <QPointer>

class ModbusPage;
class StandardTabs;

// The form of a Standard of protocol "Modbus": one link, TCP or serial, and a tab for each slave on it with
// its station number, byte order and parameter table. "Save" is connected by the main window.
class standardModbusEditDialog : public ParameterForm
{
    Q_OBJECT
public:
    // Writes defaults into the item's empty roles. The tabs appear once the event loop has run, those of
    // another item at once.
    standardModbusEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
    // Appends an empty tab with the next number; it does not become the current one.
    void addTab();
    // Fills the tab of that title, made if missing; row 0 holds series, station number, byte order and the
    // two flags, each further row a parameter of five texts.
    void loadTab(QString title, QList<QVariantList> rows);

    QLineEdit *nameEdit() const;

public slots:
    void deleteTab(int index);
    // Appends a tab with what the tab shows and makes it the current one.
    void duplicateTab(int index);
    void onProtocolChanged(QString protocol);

protected:
    ParameterTable *currentTable() const override;
    ParameterTable *latestTable() const override;
    QString exportName() const override;
    QString missingTableText() const override;

private:
    QWidget *buildContent();
    QWidget *buildIdentity(QVBoxLayout *column);
    void alignFields(const QWidget *identity);
    ModbusPage *makePage();
    void loadTabs();

    FieldGroup m_identity;
    FieldFrame m_network;
    FieldFrame m_serial;
    FieldGroup m_trigger;
    CustomPart m_stored; // the tabs
    TextField *m_name = nullptr;
    ListField *m_link = nullptr;
    StandardTabs *m_tabs = nullptr;
    QPointer<ParameterTable> m_latestTable; // of the tab made last
    int m_fieldColumn = 0;                  // left edge of the fields in the content, pixels
    bool m_tabsLoaded = false;              // by the timer of the constructor, or before it by replaceItem
};

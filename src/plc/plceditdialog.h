#pragma once

#include "definitions/plccatalogue.h"
#include "forms/fieldtable.h"
#include "model/itemref.h"
#include "parametertable/parameterform.h"

#include <vector>

class QFormLayout;
class QGroupBox;
class QStandardItem;
class QVBoxLayout;

// The form of one PLC: a stack of groups of which those that fit manufacturer and protocol are shown, over
// the parameter table. At "Save" the visible groups are written and the hidden ones erased; the form stays
// open.
class PLCEditDialog : public ParameterForm
{
    Q_OBJECT
public:
    // Writes defaults into the item's empty roles, those of hidden groups included.
    PLCEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);
    ~PLCEditDialog() override;

    // Shows another PLC; what was typed and not saved is overwritten. On purpose protocol groups that are not
    // visible keep what they show, in a tab behind another all of them.
    void replaceItem(QStandardItem *item);

public slots:
    void saveChanges();
    void clearData();
    // Shows the groups of the manufacturer and this protocol, and offers its models.
    void onProtocolChanged(QString protocol);
    // Shows the connection settings of an S7 model.
    void onmodelChanged(QString model);
    // Gives an item without a port the protocol's; the field takes no notice.
    void updateProtocolOptions(QString protocol);

protected:
    ParameterTable *currentTable() const override { return m_table; }

private:
    struct Group {
        PlcGroup id;
        QGroupBox *box;
        FieldTable fields;
    };

    QWidget *buildContent();
    QGroupBox *addBox(QVBoxLayout *column, const char *name, const QString &title);
    void addTrigger(QFormLayout *form);
    void alignFields();
    void fillAttributes();
    void loadStoredParameters();
    void saveGroup(const Group &group, QStandardItem *item) const;
    const Group &group(PlcGroup id) const;

    ItemRef m_item;
    FieldTable m_attributes;
    std::vector<Group> m_groups; // in the order of the form
    FieldTable m_trigger;
    FieldTable m_omronModel;
    ParameterTable *m_table = nullptr;
};

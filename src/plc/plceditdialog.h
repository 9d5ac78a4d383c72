#pragma once

#include "definitions/plccatalogue.h"
#include "forms/fieldframe.h"
#include "parametertable/parameterform.h"

#include <map>

// The form of one PLC: a stack of groups of which those that fit manufacturer and protocol are shown, over
// the parameter table. At "Save" the visible groups are written and the hidden ones erased.
//
// Compat: protocol groups that are not visible keep what they show when the form turns to another PLC; in a
// tab behind another these are all of them.
class PLCEditDialog : public ParameterForm
{
    Q_OBJECT
public:
    // Writes defaults into the item's empty roles, those of hidden groups included.
    PLCEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);

public slots:
    // Shows the groups of the manufacturer and this protocol, and offers its models.
    void onProtocolChanged(QString protocol);
    // Shows the connection settings of an S7 model.
    void onmodelChanged(QString model);
    // Gives an item without a port the protocol's; the field takes no notice.
    void updateProtocolOptions(QString protocol);

protected:
    ParameterTable *currentTable() const override { return m_table; }

private:
    QWidget *buildContent();
    void addAttributes(QVBoxLayout *column);
    void addParameterList(QVBoxLayout *column);
    QVector<FormPart *> parts();
    void fillAttributes(QStandardItem *item);
    FieldFrame &group(PlcGroup id) { return m_groups.at(id); }

    FieldGroup m_attributes;
    std::map<PlcGroup, FieldFrame> m_groups; // in the order of the form
    FieldGroup m_trigger;
    FieldGroup m_omronModel;
    CustomPart m_attributePart;
    CustomPart m_omronPart;
    CustomPart m_stored; // the parameters
    TextField *m_manufacturer = nullptr;
    ListField *m_protocol = nullptr;
    ListField *m_model = nullptr; // of S7
    ParameterTable *m_table = nullptr;
};

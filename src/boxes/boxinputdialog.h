#pragma once

#include "forms/fieldgroup.h"

#include <QDialog>

// The modal dialog "Add Box": asks for the name and the address of a new Box and checks neither.
class BoxInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit BoxInputDialog(QWidget *parent = nullptr);
    ~BoxInputDialog() override;

    QString name() const { return m_name->text(); }
    QString ip() const { return m_ip->text(); }
    // Always "MRN-GATE-70": the model can't be chosen.
    QString model() const { return m_model->text(); }

private:
    FieldGroup m_fields;
    TextField *m_name;
    TextField *m_ip;
    ListField *m_model;
};

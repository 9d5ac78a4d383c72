#pragma once

#include "forms/fieldtable.h"

#include <QDialog>

// The modal dialog "Add Box": asks for the name and the address of a new Box and checks neither.
class BoxInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit BoxInputDialog(QWidget *parent = nullptr);
    ~BoxInputDialog() override;

    QString name() const;
    QString ip() const;
    // Always "MRN-GATE-70": the model can't be chosen.
    QString model() const;

private:
    FieldTable m_fields;
};

#pragma once

#include "forms/fieldgroup.h"

#include <QDialog>

// The modal dialog "Add Standard": asks for the name and the protocol of a new Standard and checks neither.
class standardInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit standardInputDialog(QWidget *parent = nullptr);
    ~standardInputDialog() override;

    QString name() const { return m_name->text(); }
    // "DLT645" or "Modbus".
    QString protocol() const { return m_protocol->text(); }

private:
    FieldGroup m_fields;
    TextField *m_name;
    ListField *m_protocol;
};

#pragma once

#include "forms/fieldgroup.h"

#include <QDialog>

// The modal dialog "Add PLC": asks for the name, the manufacturer and the protocol of a new PLC and checks
// none of them.
class PLCInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PLCInputDialog(QWidget *parent = nullptr);
    ~PLCInputDialog() override;

    // As typed, blanks included.
    QString plcName() const { return m_name->text(); }
    QString manufacturer() const { return m_manufacturer->text(); }
    QString protocol() const { return m_protocol->text(); }

public slots:
    // Offers the protocols of the manufacturer; the first becomes current.
    void updateModelList(QString manufacturer);

private:
    FieldGroup m_fields;
    TextField *m_name;
    ListField *m_manufacturer;
    ListField *m_protocol;
};

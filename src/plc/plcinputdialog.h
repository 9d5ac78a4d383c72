#pragma once

#include <QDialog>

class QComboBox;
class QLineEdit;

// The modal dialog "Add PLC": asks for the name, the manufacturer and the protocol of a new PLC and checks
// none of them.
class PLCInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PLCInputDialog(QWidget *parent = nullptr);
    ~PLCInputDialog() override;

    // As typed, blanks included.
    QString plcName() const;
    QString manufacturer() const;
    QString protocol() const;

public slots:
    // Offers the protocols of the manufacturer; the first becomes current.
    void updateModelList(QString manufacturer);

private:
    QLineEdit *m_name;
    QComboBox *m_manufacturer;
    QComboBox *m_protocol;
};

#pragma once

#include <QDialog>

class QComboBox;
class QLineEdit;

// The modal dialog "Add Standard": asks for the name and the protocol of a new Standard and checks neither.
class standardInputDialog : public QDialog
{
    Q_OBJECT
public:
    explicit standardInputDialog(QWidget *parent = nullptr);
    ~standardInputDialog() override;

    QString name() const;
    // "DLT645" or "Modbus".
    QString protocol() const;

private:
    QLineEdit *m_name;
    QComboBox *m_protocol;
};

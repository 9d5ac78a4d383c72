#pragma once

#include "standards/standardtableform.h"

class QComboBox;
class QRegularExpressionValidator;

// The form of a Standard of protocol "CustomPoll": a serial line and the raw bytes or text that are sent on
// it.
class standardCustomPollEditDialog : public StandardTableForm
{
    Q_OBJECT
public:
    // Writes the text defaults into the item's empty roles.
    standardCustomPollEditDialog(QStandardItem *item, Workspace *workspace, QWidget *parent = nullptr);

public slots:
    // A row's list "HEX" has the entry with that index, the first being hexadecimal digits: only these
    // may have a CRC.
    void onCRCComboBoxChanged(int index, QComboBox *crcComboBox);
    // Does the same, and clears the data, since other data may be typed now.
    void onHexComboBoxChanged(int index, QComboBox *crcComboBox, QLineEdit *dataContentLineEdit);

private:
    void connectRow(int row);
    QRegularExpressionValidator *validatorFor(int hexIndex) const;

    QRegularExpressionValidator *m_hexDigits;
    QRegularExpressionValidator *m_printable;
};

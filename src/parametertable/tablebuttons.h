#pragma once

#include <QWidget>

class ParameterForm;
struct ParameterVariant;

// The row of buttons that work on the form's current table: "Add" and "Remove All", and where there is CSV
// "Import", "Export" and the note that tells what came of these.
class TableButtons : public QWidget
{
    Q_OBJECT
public:
    TableButtons(const ParameterVariant &variant, ParameterForm *form, QWidget *parent);
};

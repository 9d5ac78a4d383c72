#include "parametertable/tablebuttons.h"

#include "forms/formpage.h"
#include "parametertable/parameterform.h"
#include "parametertable/tablenote.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

TableButtons::TableButtons(const ParameterVariant &variant, ParameterForm *form, QWidget *parent)
    : QWidget(parent)
{
    static const struct {
        const char *text;
        const char *icon;
        const char *name;
        void (ParameterForm::*pressed)();
        bool isOfCsv;
    } table[] = {
        {QT_TRANSLATE_NOOP("ParameterTable", "Add"), ":/adsdemo/images/add.svg", "addButton",
         &ParameterForm::startParameter, false},
        {QT_TRANSLATE_NOOP("ParameterTable", "Remove All"), ":/adsdemo/images/cancel.svg", "removeAllButton",
         &ParameterForm::removeAllParameters, false},
        {QT_TRANSLATE_NOOP("ParameterTable", "Import"), ":/adsdemo/images/read.svg", "importButton",
         &ParameterForm::importParameters, true},
        {QT_TRANSLATE_NOOP("ParameterTable", "Export"), ":/adsdemo/images/write.svg", "exportButton",
         &ParameterForm::exportParameters, true},
    };
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto *row = new QHBoxLayout;
    column->addLayout(row);
    for (const auto &entry : table) {
        if (variant.hasCsv || !entry.isOfCsv) {
            QPushButton *button =
                FormPage::button(variant.translated(entry.text), QLatin1String(entry.icon), this);
            button->setObjectName(QLatin1String(entry.name));
            connect(button, &QPushButton::clicked, form, entry.pressed);
            row->addWidget(button);
        }
    }
    row->addStretch();
    if (variant.hasCsv) {
        column->addWidget(new TableNote(variant, this)); // beside the buttons it would be cut short
    }
}

#include "parametertable/tablebuttons.h"

#include "forms/formpage.h"
#include "parametertable/parameterform.h"
#include "parametertable/tablenote.h"

#include <QHBoxLayout>
#include <QPushButton>

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
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    for (const auto &entry : table) {
        if (variant.hasCsv || !entry.isOfCsv) {
            QPushButton *button =
                FormPage::button(variant.translated(entry.text), QLatin1String(entry.icon), this);
            button->setObjectName(QLatin1String(entry.name));
            connect(button, &QPushButton::clicked, form, entry.pressed);
            row->addWidget(button);
        }
    }
    if (variant.hasCsv) {
        row->addWidget(new TableNote(variant, this), 1);
    } else {
        row->addStretch();
    }
}

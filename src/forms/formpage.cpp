#include "forms/formpage.h"

#include "widgets/combobox.h"

#include <QBoxLayout>
#include <QDialog>
#include <QFormLayout>
#include <QIcon>
#include <QPushButton>
#include <QScrollArea>

namespace FormPage {

QPushButton *button(const QString &text, const QString &icon, QWidget *parent)
{
    auto *made = new QPushButton(QIcon(icon), text, parent);
    made->setAutoDefault(false);
    return made;
}

QScrollArea *scrollArea(QWidget *content, QWidget *parent)
{
    auto *area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus); // a stop of the Tab key where nothing is to be done
    area->setWidget(content);
    return area;
}

Buttons appendButtons(QBoxLayout *layout, const QString &saveText, const QString &cancelText)
{
    QWidget *parent = layout->parentWidget();
    Buttons buttons{button(saveText, QStringLiteral(":/adsdemo/images/ok.svg"), parent),
                    button(cancelText, QStringLiteral(":/adsdemo/images/cancel.svg"), parent)};
    buttons.save->setObjectName(QStringLiteral("saveButton"));
    buttons.cancel->setObjectName(QStringLiteral("cancelButton"));
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(buttons.save);
    row->addWidget(buttons.cancel);
    layout->addLayout(row);
    return buttons;
}

QPushButton *appendDialogButtons(QBoxLayout *layout, const QString &okText, const QString &cancelText)
{
    const Buttons buttons = appendButtons(layout, okText, cancelText);
    buttons.save->setObjectName(QStringLiteral("okButton"));
    buttons.save->setDefault(true);
    QObject::connect(buttons.cancel, &QPushButton::clicked, qobject_cast<QDialog *>(layout->parentWidget()),
                     &QDialog::reject);
    return buttons.save;
}

void addTrigger(QFormLayout *form, const QString &entry)
{
    auto *trigger = new ComboBox(form->parentWidget());
    trigger->setObjectName(QStringLiteral("trigger"));
    trigger->addItem(entry);
    QLayoutItem *item = form->itemAt(0, QFormLayout::FieldRole);
    QWidget *field = item->widget();
    form->removeItem(item);
    delete item; // the layout's item, not the widget
    auto *both = new QHBoxLayout;
    both->addWidget(trigger);
    both->addWidget(field);
    form->setLayout(0, QFormLayout::FieldRole, both);
    QWidget::setTabOrder(trigger, field);
}

void orderBehind(QWidget *previous, const QWidget *page)
{
    const auto widgets = page->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy();
        if (takesTab && widget->window() == page->window()) {
            QWidget::setTabOrder(previous, widget);
            previous = widget;
        }
    }
}

} // namespace FormPage

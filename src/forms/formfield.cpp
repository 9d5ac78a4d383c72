#include "forms/formfield.h"

#include "forms/fieldgroup.h"

#include <QLabel>
#include <QStandardItem>

FormField::FormField(const FieldGroup &group, int role, const char *name, const QString &label,
                     QWidget *widget)
    : m_role(role)
    , m_default(group.defaultOf(role))
    , m_widget(widget)
    , m_label(new QLabel(label, group.page()))
{
    m_widget->setObjectName(QString::fromLatin1(name));
    m_label->setBuddy(m_widget);
}

void FormField::setEnabled(bool enabled)
{
    m_label->setEnabled(enabled);
    m_widget->setEnabled(enabled);
}

void FormField::setVisible(bool visible)
{
    m_label->setVisible(visible);
    m_widget->setVisible(visible);
}

void FormField::fill(QStandardItem *item)
{
    if (m_role != noRole) {
        writeDefault(item);
        show(item->data(m_role));
    }
}

void FormField::refill(QStandardItem *item, const OnRefill &onRefill)
{
    if (m_role != noRole) {
        if (!onRefill.emptyStays) {
            writeDefault(item);
        }
        showAgain(item->data(m_role), onRefill);
    }
}

void FormField::save(QStandardItem *item) const
{
    if (m_role != noRole) {
        item->setData(value(), m_role);
    }
}

void FormField::erase(QStandardItem *item) const
{
    if (m_role != noRole) {
        item->setData(QVariant(), m_role);
    }
}

void FormField::writeDefault(QStandardItem *item) const
{
    if (m_default && isEmpty(item->data(m_role))) {
        item->setData(fromDefault(QString::fromLatin1(m_default)), m_role);
    }
}

#include "forms/fieldframe.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGroupBox>

FieldFrame::FieldFrame(const char *className, Definitions::Kind kind, Refill refill)
    : FieldGroup(className, kind)
    , m_refill(refill)
{
}

QGroupBox *FieldFrame::build(QBoxLayout *column, const QString &title)
{
    m_box = new QGroupBox(title, column->parentWidget());
    column->addWidget(m_box);
    setLayout(new QFormLayout(m_box));
    return m_box;
}

void FieldFrame::refill(QStandardItem *item)
{
    if (m_refill == Refill::Always || m_box->isVisible()) {
        FieldGroup::refill(item);
    }
}

void FieldFrame::save(QStandardItem *item)
{
    if (m_box->isVisible()) {
        FieldGroup::save(item);
    } else {
        erase(item);
    }
}

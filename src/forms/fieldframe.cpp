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
    m_frame = new QGroupBox(title, column->parentWidget());
    column->addWidget(m_frame);
    setLayout(new QFormLayout(m_frame));
    return m_frame;
}

void FieldFrame::refill(QStandardItem *item)
{
    if (m_refill == Refill::Always || m_frame->isVisible()) {
        FieldGroup::refill(item);
    }
}

void FieldFrame::save(QStandardItem *item)
{
    if (m_frame->isVisible()) {
        FieldGroup::save(item);
    } else {
        erase(item);
    }
}

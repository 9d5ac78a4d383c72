#include "forms/formpart.h"

#include <utility>

CustomPart::CustomPart(OfItem fill, OfItem save, std::function<void()> clear, OfItem refill)
    : m_fill(std::move(fill))
    , m_save(std::move(save))
    , m_clear(std::move(clear))
    , m_refill(std::move(refill))
{
}

void CustomPart::fill(QStandardItem *item)
{
    if (m_fill) {
        m_fill(item);
    }
}

void CustomPart::refill(QStandardItem *item)
{
    if (m_refill) {
        m_refill(item);
    } else {
        fill(item);
    }
}

void CustomPart::save(QStandardItem *item)
{
    if (m_save) {
        m_save(item);
    }
}

void CustomPart::clear()
{
    if (m_clear) {
        m_clear();
    }
}

#pragma once

#include <functional>

class QStandardItem;

// What a form is made of: a part shows some roles of the form's item and writes them back. A form walks its
// parts in order, and that is the order in which a save writes the roles.
class FormPart
{
public:
    virtual ~FormPart() = default;

    // Writes defaults into empty roles, then shows the item. Handles no event.
    virtual void fill(QStandardItem *item) = 0;
    // Does the same in a form that is open already and turns to this item.
    virtual void refill(QStandardItem *item) { fill(item); }
    // May show a message, during which the form or the item may go.
    virtual void save(QStandardItem *item) = 0;
    virtual void clear() = 0;

protected:
    FormPart() = default;
    FormPart(const FormPart &) = default;
    FormPart &operator=(const FormPart &) = default;
};

// A part by functions of its form; what has no function does nothing. Without a function of its own,
// refilling is filling.
class CustomPart : public FormPart
{
public:
    using OfItem = std::function<void(QStandardItem *)>;

    CustomPart(OfItem fill, OfItem save, std::function<void()> clear, OfItem refill = {});

    void fill(QStandardItem *item) override;
    void refill(QStandardItem *item) override;
    void save(QStandardItem *item) override;
    void clear() override;

private:
    OfItem m_fill;
    OfItem m_save;
    std::function<void()> m_clear;
    OfItem m_refill;
};

#pragma once

#include "forms/fieldgroup.h"

class QBoxLayout;
class QGroupBox;

// A group of fields in a frame of its own, which a form hides while they do not apply. A save writes the
// fields of a visible frame and erases those of a hidden one.
class FieldFrame : public FieldGroup
{
public:
    enum class Refill { Always, WhenVisible };

    FieldFrame(const char *className, Definitions::Kind kind, Refill refill = Refill::Always);

    // Appends the frame to the layout, which is already set on a widget; fields are added to it from here on.
    // The title is already translated.
    QGroupBox *build(QBoxLayout *column, const QString &title);
    QGroupBox *frame() const { return m_frame; }

    void refill(QStandardItem *item) override;
    void save(QStandardItem *item) override;

private:
    Refill m_refill;
    QGroupBox *m_frame = nullptr;
};

#pragma once

#include <QStringList>

class QImage;
class QWidget;

// Looks at a shown form as a user with weak eyes, a narrow screen or no mouse would, and gives a line for
// each thing that is wrong.
namespace Inspector {

// Enabled texts whose contrast to what is around them is below 4.5, in the picture of the form.
QStringList paleTexts(const QWidget *form, const QImage &picture);
// Live buttons without a text whose icon's contrast to its ground is below 3.
QStringList paleIcons(const QWidget *form, const QImage &picture);
// Texts that are not shown in full and have no tool tip that says them, and fields too narrow for an address.
QStringList cutOffTexts(const QWidget *form);
// Pages that can only be seen by scrolling sideways.
QStringList sidewaysPages(const QWidget *form);

// Labels that lead to no field, fields that no label names and icons that say nothing.
QStringList namelessThings(const QWidget *form);
// Inputs that the Tab key does not reach, stops of it that are nowhere to be seen, and steps that go against
// the eye.
QStringList strayTabs(QWidget *form);

// Tables and lists out of which nothing can be copied; the clipboard is filled on the way.
QStringList tablesWithoutCopy(const QWidget *form);

} // namespace Inspector

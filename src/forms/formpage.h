#pragma once

class QBoxLayout;
class QFormLayout;
class QPushButton;
class QScrollArea;
class QString;
class QWidget;

// What forms and dialogs are laid out with: buttons, the scroll area of an edit form and the confirming row
// below it, and the tab order.
namespace FormPage {

struct Buttons {
    QPushButton *save;   // objectName "saveButton"
    QPushButton *cancel; // objectName "cancelButton"
};

// A button with its icon resource, pressed by Enter only if a dialog makes it its default; the text is
// already translated.
QPushButton *button(const QString &text, const QString &icon, QWidget *parent);
// A resizable scroll area without a frame that shows the content.
QScrollArea *scrollArea(QWidget *content, QWidget *parent);
// Appends the row of the two confirming buttons, neither of them connected; the texts are already translated.
Buttons appendButtons(QBoxLayout *layout, const QString &saveText, const QString &cancelText);
// Appends such a row to the dialog that the layout is of: "Cancel" rejects it, and "OK", which is returned
// and not connected, is what Enter presses. Its objectName is "okButton".
QPushButton *appendDialogButtons(QBoxLayout *layout, const QString &okText, const QString &cancelText);
// Puts the list "trigger" before the field of the first row, also in the tab order: what sets a reading off.
// It has this one entry, which is not stored; the text is already translated.
void addTrigger(QFormLayout *form, const QString &entry);
// Puts the inputs of a page behind a widget in the tab order: what is made after its form comes last
// otherwise, behind the confirming buttons or even the rest of the window.
void orderBehind(QWidget *previous, const QWidget *page);

} // namespace FormPage

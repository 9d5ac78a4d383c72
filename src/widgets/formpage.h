#pragma once

class QBoxLayout;
class QFormLayout;
class QPushButton;
class QScrollArea;
class QString;
class QWidget;

// The frame that the edit forms share: a frameless scroll area over a row with "Save" and "Cancel".
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
// Appends the row of the two confirming buttons; the accepting one may be "Save" or "OK" by its text.
Buttons appendButtons(QBoxLayout *layout, const QString &acceptText, const QString &cancelText);
// Puts a widget between the label and the field of a row, also in the tab order.
void putBeforeField(QFormLayout *form, int row, QWidget *widget);
// Puts the inputs of a page behind a widget in the tab order: what is made after its form stands last
// otherwise, behind the confirming buttons or even the rest of the window.
void orderBehind(QWidget *previous, const QWidget *page);

} // namespace FormPage

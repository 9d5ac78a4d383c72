#pragma once

#include "forms/fields.h"

#include <QHash>
#include <QStringList>
#include <QVariant>
#include <QVector>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QStandardItem;
class QValidator;
class QWidget;

enum class FieldKind {
    Text,     // QLineEdit
    Password, // QLineEdit that hides what is typed
    ReadOnly, // QLineEdit that shows only
    List,     // QComboBox of fixed entries, stored as the entry's text
    Check,    // QCheckBox, stored as a boolean
    OnOff,    // two QRadioButtons, stored as "on" or "off"
    Coded,    // QComboBox of choices, stored as the code of the chosen one
    Numbered, // QRadioButtons, stored as the number, from 1, of the checked one
    Script,   // QTextEdit, stored as plain text
};

enum class FieldCheck { None, Ipv4, HostName, NoCjk, Port, Integer, Pattern };

// One field of a form: the row that builds, fills, saves and erases it.
struct Field {
    // objectName of the widget; radio buttons are "<name>On" and "<name>Off", or "<name>1" and so on, in a
    // "<name>" widget
    const char *name;
    const char *label; // source text; of a field of several forms in a shared context
    FieldKind kind;
    int role;                            // role of the item, or FieldTable::noRole
    FieldCheck check = FieldCheck::None; // what may be typed
    QStringList entries = {};            // source texts of a List or of radio buttons, in order
    const char *defaultValue = nullptr;  // written into a role that reads as empty when the form opens; a
                                         // Check takes "true", for a role that holds nothing
    const char *listFallback = nullptr;  // List: entry selected when the role's text is not among the entries
    const char *pattern = nullptr;       // of FieldCheck::Pattern: the regular expression
    QVector<Choice> choices = {};        // of a Coded field, in order; the first stands for an unknown code
    bool isTranslated = true;            // false for texts that stay as they are
    bool unknownShowsNone = false; // Coded: for an unknown code nothing is selected in place of the first
};

// The fields of a form or of one group of it. The widgets belong to the layout's parent widget; the table
// itself holds no more than pointers, so it must not outlive the form. A form of several pages appends and
// builds page by page: all its fields then fill, save and clear as one, and fields with the same check share
// one validator.
class FieldTable
{
public:
    static constexpr int noRole = -1;

    enum class Unknown {
        SelectFallback, // a List goes to its fallback, or to its first entry
        Keep,           // a List stays as it is
    };

    // All texts are looked up in the context, which is the class name of the form that shows them.
    explicit FieldTable(const char *context, QVector<Field> fields = {});

    // The fields of a further page, to be built before anything else is done with the table.
    void append(const QVector<Field> &fields);
    // Appends one labelled row a field to the layout, which is already set on a widget; labels are buddies.
    // Fields built before are passed over.
    void build(QFormLayout *layout);
    // The same for fields that only carry a value: hidden children of the parent, in no layout.
    void buildUnseen(QWidget *parent);

    // Writes defaults into empty roles, then shows the item's roles.
    void fill(QStandardItem *item, Unknown unknown = Unknown::SelectFallback) const;
    // Writes what the widgets show into the item's roles.
    void save(QStandardItem *item) const;
    // Sets the item's roles to an invalid QVariant.
    void erase(QStandardItem *item) const;
    // Empties texts, selects first entries and first radio buttons, unchecks boxes.
    void clear() const;
    // Selects the first entry of each List whose role is empty, for a form that is pointed at another item.
    void resetEmptyLists(const QStandardItem *item) const;

    // What the widget of the field shows, as it would be stored; an invalid QVariant for an unknown name.
    QVariant value(const QString &name) const;
    QString text(const QString &name) const;
    // Shows the text in the field; a List without that entry stays, an OnOff is unchecked but for "on" and
    // "off".
    void setText(const QString &name, const QString &text) const;

    QWidget *widget(const QString &name) const;
    QLineEdit *lineEdit(const QString &name) const;
    QComboBox *comboBox(const QString &name) const;
    QLabel *label(const QString &name) const;

    // The width that the widest label asks for, in pixels.
    int labelWidth() const;
    // Makes every label at least that wide.
    void setLabelWidth(int width) const;
    // Makes all labels of these tables as wide as the widest, so that the fields stand in one line.
    static void align(const QVector<const FieldTable *> &tables);

    const QVector<Field> &fields() const { return m_fields; }
    const char *context() const { return m_context; }

private:
    // Makes the widget and its label, and enters both.
    void make(const Field &field, QWidget *parent);
    QWidget *makeWidget(const Field &field, QWidget *parent);
    QWidget *makeList(const Field &field, QWidget *parent) const;
    QWidget *makeRadios(const Field &field, const QStringList &suffixes, QWidget *parent) const;
    QValidator *validatorFor(const Field &field, QWidget *parent);
    QString translated(const Field &field, const char *source) const;
    QVariant valueOf(const Field &field) const;
    void show(const Field &field, const QVariant &value, Unknown unknown) const;
    void showEntry(const Field &field, QComboBox *box, const QString &text, Unknown unknown) const;
    static void showCode(const Field &field, QComboBox *box, QVariant code, Unknown unknown);

    const char *m_context;
    QVector<Field> m_fields;
    QHash<QString, QWidget *> m_widgets;
    QHash<QString, QLabel *> m_labels;
    QHash<QString, QValidator *> m_validators; // one object serves all fields of a check
};

#pragma once

#include "forms/formfield.h"
#include "forms/validators.h"

#include <QStringList>
#include <QVector>

class PasswordEye;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QTextEdit;

// The kinds of fields. What sets one up gives the field back, so that a row of a form is one statement.

// A line of text.
class TextField : public FormField
{
public:
    TextField(FieldGroup &group, int role, const char *name, const QString &label);

    // What may be typed: one of the shared validators, or a regular expression.
    TextField *check(MakeValidator make);
    TextField *pattern(const char *regularExpression);
    // Takes a time in milliseconds, of -1 to 2147483647; the tool tip says the unit.
    TextField *milliseconds();
    // Hides what is typed, but while the user holds its eye or F8.
    TextField *password();
    TextField *readOnly();

    QLineEdit *edit() const;
    QVariant value() const override;
    void clear() override;

protected:
    void show(const QVariant &value) override;

private:
    FieldGroup &m_group;
    PasswordEye *m_eye = nullptr;
};

// A list of entries, stored as the text of the selected one. It begins with those of the role's row.
class ListField : public FormField
{
public:
    ListField(FieldGroup &group, int role, const char *name, const QString &label);

    // Appends entries as they are; those of one text are separated by blanks.
    ListField *entries(const QStringList &entries);
    ListField *entries(const char *entries);
    // Selected in place of the first entry where the role's text is not among the entries.
    ListField *fallback(const char *entry);
    // For a list that shows what can't be changed.
    ListField *disabled();

    QComboBox *list() const;
    QVariant value() const override;
    // Without such an entry the list stays as it is.
    void setText(const QString &text) override;
    void clear() override;

protected:
    void show(const QVariant &value) override;
    void showAgain(const QVariant &value, const OnRefill &onRefill) override;

private:
    // False, and nothing changed, without such an entry.
    bool select(const QString &text);

    QString m_fallback;
};

// A choice of a CodedField: what is shown and what is stored.
struct Choice {
    const char *text; // source text in UTF-8, shown as it is where the catalogue does not have it
    QVariant code;
};

// A list of choices, stored as the code of the selected one.
class CodedField : public FormField
{
public:
    CodedField(FieldGroup &group, int role, const char *name, const QString &label);

    // In order; the first stands for an unknown code. All codes are of one type.
    CodedField *choices(const QVector<Choice> &choices);
    // For an unknown code nothing is selected.
    CodedField *unknownShowsNone();

    QComboBox *list() const;
    QVariant value() const override;
    void clear() override;

protected:
    void show(const QVariant &value) override;

private:
    const FieldGroup &m_group;
    int m_unknown = 0; // index
};

// A check, stored as a boolean.
class CheckField : public FormField
{
public:
    CheckField(FieldGroup &group, int role, const char *name, const QString &label);

    // Shown, and not written, for a role that holds nothing.
    CheckField *unsetShowsChecked();

    QCheckBox *check() const;
    bool isChecked() const;
    QVariant value() const override;
    void clear() override;

protected:
    void show(const QVariant &value) override;
    QVariant fromDefault(const QString &text) const override { return text == QLatin1String("true"); }
    bool isEmpty(const QVariant &value) const override { return !value.isValid(); }

private:
    bool m_unset = false;
};

// Two radio buttons "<name>On" and "<name>Off", stored as "on" or "off".
class OnOffField : public FormField
{
public:
    OnOffField(FieldGroup &group, int role, const char *name, const QString &label);

    OnOffField *texts(const QString &on, const QString &off);

    QVariant value() const override;
    // Checks "On".
    void clear() override;

protected:
    // Checks neither for any other text.
    void show(const QVariant &value) override;

private:
    QRadioButton *m_on;
    QRadioButton *m_off;
};

// Radio buttons "<name>1" and so on, stored as the number of the checked one.
class NumberedField : public FormField
{
public:
    NumberedField(FieldGroup &group, int role, const char *name, const QString &label);

    NumberedField *texts(const QStringList &texts);

    // Counted from 1.
    QRadioButton *button(int number) const { return m_buttons.value(number - 1); }
    QVariant value() const override;
    // Does nothing: one of the buttons is always checked.
    void clear() override {}

protected:
    // The first button stands for any other value.
    void show(const QVariant &value) override;

private:
    QVector<QRadioButton *> m_buttons;
};

// A text of several lines, stored as plain text.
class ScriptField : public FormField
{
public:
    ScriptField(FieldGroup &group, int role, const char *name, const QString &label);

    QTextEdit *edit() const;
    QVariant value() const override;
    // Does nothing: the form that has scripts keeps them.
    void clear() override {}

protected:
    void show(const QVariant &value) override;
};

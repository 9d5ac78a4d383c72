#include "forms/fields.h"

#include "definitions/choices.h"
#include "forms/fieldgroup.h"
#include "model/projecttree.h"
#include "widgets/combobox.h"
#include "widgets/passwordeye.h"
#include "widgets/showonly.h"
#include "widgets/unitmark.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QTextEdit>
#include <QValidator>

namespace {

// The row of radio buttons that stands in for a widget of its own.
QWidget *makeRadioRow(QWidget *parent)
{
    auto *row = new QWidget(parent);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    return row;
}

QRadioButton *addRadio(QWidget *row, const char *name, const QString &suffix)
{
    auto *button = new QRadioButton(row);
    button->setObjectName(QLatin1String(name) + suffix);
    auto *layout = qobject_cast<QHBoxLayout *>(row->layout());
    layout->insertWidget(layout->count() - 1, button);
    if (!row->focusProxy()) {
        row->setFocusProxy(button);
    }
    return button;
}

// A validator lets the beginning of an address stand, and nobody refuses it later.
void markIncomplete(QLineEdit *edit, const QString &why)
{
    QAction *mark = edit->addAction(QIcon(QStringLiteral(":/adsdemo/images/nothing-read.svg")),
                                    QLineEdit::TrailingPosition);
    mark->setText(why);
    mark->setObjectName(QStringLiteral("incompleteMark"));
    const auto show = [edit, mark, why] {
        QString text = edit->text();
        int position = 0;
        const bool isIncomplete =
            !text.isEmpty() && edit->validator()->validate(text, position) == QValidator::Intermediate;
        mark->setVisible(isIncomplete);
        edit->setAccessibleDescription(isIncomplete ? why : QString());
    };
    QObject::connect(edit, &QLineEdit::textChanged, mark, show);
    show();
}

// A button of an exclusive pair refuses to be unchecked, which would leave one item's choice to the next.
void check(QRadioButton *button, bool checked)
{
    button->setAutoExclusive(false);
    button->setChecked(checked);
    button->setAutoExclusive(true);
}

} // namespace

TextField::TextField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, new QLineEdit(group.page()))
    , m_group(group)
{
}

TextField *TextField::check(MakeValidator make)
{
    edit()->setValidator(m_group.validator(make));
    if (make == ipv4Validator) {
        markIncomplete(edit(),
                       m_group.translated(QT_TRANSLATE_NOOP(
                           "DefinitionForm", "Incomplete: it is saved and sent as it stands")));
    }
    return this;
}

TextField *TextField::pattern(const char *regularExpression)
{
    edit()->setValidator(m_group.validator(QString::fromLatin1(regularExpression)));
    return this;
}

TextField *TextField::milliseconds()
{
    edit()->setToolTip(m_group.translated(QT_TRANSLATE_NOOP("DefinitionForm", "In milliseconds (ms)")));
    new UnitMark(QStringLiteral("ms"), edit());
    return check(integerValidator);
}

TextField *TextField::password()
{
    m_eye = new PasswordEye(
        m_group.translated(QT_TRANSLATE_NOOP("DefinitionForm", "Show the password while held (F8)")), edit());
    return this;
}

TextField *TextField::readOnly()
{
    ShowOnly::make(edit());
    return this;
}

QLineEdit *TextField::edit() const
{
    return static_cast<QLineEdit *>(widget());
}

QVariant TextField::value() const
{
    return edit()->text();
}

void TextField::clear()
{
    edit()->clear();
}

void TextField::show(const QVariant &value)
{
    if (m_eye) {
        m_eye->hide(); // another item's
    }
    edit()->setText(value.toString());
}

ListField::ListField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, new ComboBox(group.page()))
{
    entries(group.choicesOf(role));
}

ListField *ListField::entries(const QStringList &entries)
{
    list()->addItems(entries);
    return this;
}

ListField *ListField::entries(const char *entries)
{
    return this->entries(Choices::list(entries));
}

ListField *ListField::fallback(const char *entry)
{
    m_fallback = QString::fromLatin1(entry);
    return this;
}

ListField *ListField::disabled()
{
    list()->setEnabled(false);
    return this;
}

QComboBox *ListField::list() const
{
    return static_cast<QComboBox *>(widget());
}

QVariant ListField::value() const
{
    return list()->currentText();
}

void ListField::setText(const QString &text)
{
    select(text);
}

void ListField::clear()
{
    list()->setCurrentIndex(0);
}

void ListField::show(const QVariant &value)
{
    if (!select(value.toString()) && !select(m_fallback)) {
        list()->setCurrentIndex(0);
    }
}

void ListField::showAgain(const QVariant &value, const OnRefill &onRefill)
{
    const QString text = value.toString();
    if (onRefill.emptyGoesFirst && text.isEmpty()) {
        list()->setCurrentIndex(0);
    } else if (onRefill.unknownStays) {
        select(text);
    } else {
        show(value);
    }
}

bool ListField::select(const QString &text)
{
    const int index = list()->findText(text);
    if (index >= 0) {
        list()->setCurrentIndex(index);
    }
    return index >= 0;
}

CodedField::CodedField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, new ComboBox(group.page()))
    , m_group(group)
{
}

CodedField *CodedField::choices(const QVector<Choice> &choices)
{
    for (const Choice &choice : choices) {
        list()->addItem(m_group.translated(choice.text), choice.code);
    }
    return this;
}

CodedField *CodedField::unknownShowsNone()
{
    m_unknown = -1;
    return this;
}

QComboBox *CodedField::list() const
{
    return static_cast<QComboBox *>(widget());
}

QVariant CodedField::value() const
{
    return list()->currentData();
}

void CodedField::clear()
{
    list()->setCurrentIndex(0);
}

void CodedField::show(const QVariant &value)
{
    QVariant code = value;
    code.convert(int(list()->itemData(0).type())); // a document's codes are texts
    const int index = list()->findData(code);
    list()->setCurrentIndex(index < 0 ? m_unknown : index);
}

CheckField::CheckField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, new QCheckBox(group.page()))
{
    // As high as its neighbours, so that rows and labels keep one distance.
    check()->setMinimumHeight(QLineEdit().sizeHint().height());
}

CheckField *CheckField::unsetShowsChecked()
{
    m_unset = true;
    return this;
}

QCheckBox *CheckField::check() const
{
    return static_cast<QCheckBox *>(widget());
}

bool CheckField::isChecked() const
{
    return check()->isChecked();
}

QVariant CheckField::value() const
{
    return isChecked();
}

void CheckField::clear()
{
    check()->setChecked(false);
}

void CheckField::show(const QVariant &value)
{
    check()->setChecked(value.isValid() ? ProjectTree::isTrue(value) : m_unset);
}

OnOffField::OnOffField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, makeRadioRow(group.page()))
    , m_on(addRadio(widget(), name, QStringLiteral("On")))
    , m_off(addRadio(widget(), name, QStringLiteral("Off")))
{
}

OnOffField *OnOffField::texts(const QString &on, const QString &off)
{
    m_on->setText(on);
    m_off->setText(off);
    return this;
}

QVariant OnOffField::value() const
{
    return m_on->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
}

void OnOffField::clear()
{
    show(QStringLiteral("on"));
}

void OnOffField::show(const QVariant &value)
{
    ::check(m_on, value.toString() == QLatin1String("on"));
    ::check(m_off, value.toString() == QLatin1String("off"));
}

NumberedField::NumberedField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, makeRadioRow(group.page()))
{
}

NumberedField *NumberedField::texts(const QStringList &texts)
{
    for (const QString &text : texts) {
        const QByteArray name = widget()->objectName().toLatin1();
        QRadioButton *button = addRadio(widget(), name, QString::number(m_buttons.size() + 1));
        button->setText(text);
        m_buttons.append(button);
    }
    return this;
}

QVariant NumberedField::value() const
{
    for (int number = 1; number <= m_buttons.size(); ++number) {
        if (button(number)->isChecked()) {
            return number;
        }
    }
    return 0;
}

void NumberedField::show(const QVariant &value)
{
    QRadioButton *shown = button(value.toInt());
    (shown ? shown : button(1))->setChecked(true);
}

ScriptField::ScriptField(FieldGroup &group, int role, const char *name, const QString &label)
    : FormField(group, role, name, label, new QTextEdit(group.page()))
{
    edit()->setAcceptRichText(false);
    edit()->setTabChangesFocus(true); // else Tab would never leave it
}

QTextEdit *ScriptField::edit() const
{
    return static_cast<QTextEdit *>(widget());
}

QVariant ScriptField::value() const
{
    return edit()->toPlainText();
}

void ScriptField::show(const QVariant &value)
{
    edit()->setPlainText(value.toString());
}

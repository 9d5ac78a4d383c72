#include "forms/fieldtable.h"

#include "forms/validators.h"
#include "model/projecttree.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QStandardItem>
#include <QTextEdit>

namespace {

QString nameOf(const Field &field)
{
    return QString::fromLatin1(field.name);
}

QRadioButton *radio(const QWidget *group, const QString &suffix)
{
    return group->findChild<QRadioButton *>(group->objectName() + suffix);
}

QStringList onOff()
{
    return {QStringLiteral("On"), QStringLiteral("Off")};
}

// "1", "2" and so on, one for each entry.
QStringList numbers(const Field &field)
{
    QStringList result;
    for (int number = 1; number <= field.entries.size(); ++number) {
        result.append(QString::number(number));
    }
    return result;
}

int checkedNumber(const QWidget *group, const Field &field)
{
    const QStringList suffixes = numbers(field);
    for (const QString &suffix : suffixes) {
        if (radio(group, suffix)->isChecked()) {
            return suffix.toInt();
        }
    }
    return 0;
}

void writeDefault(const Field &field, QStandardItem *item)
{
    const QVariant value = item->data(field.role);
    if (field.kind == FieldKind::Check) {
        if (!value.isValid()) {
            item->setData(field.defaultValue == QByteArrayLiteral("true"), field.role);
        }
    } else if (value.toString().isEmpty()) {
        item->setData(QString::fromLatin1(field.defaultValue), field.role);
    }
}

// A button of an exclusive pair refuses to be unchecked, which would leave one item's choice to the next.
void check(QRadioButton *button, bool checked)
{
    button->setAutoExclusive(false);
    button->setChecked(checked);
    button->setAutoExclusive(true);
}

} // namespace

FieldTable::FieldTable(const char *context, QVector<Field> fields)
    : m_context(context)
    , m_fields(std::move(fields))
{
}

void FieldTable::append(const QVector<Field> &fields)
{
    m_fields += fields;
}

void FieldTable::build(QFormLayout *layout)
{
    for (const Field &field : qAsConst(m_fields)) {
        if (!widget(nameOf(field))) {
            make(field, layout->parentWidget());
            layout->addRow(label(nameOf(field)), widget(nameOf(field)));
        }
    }
}

void FieldTable::buildUnseen(QWidget *parent)
{
    for (const Field &field : qAsConst(m_fields)) {
        if (!widget(nameOf(field))) {
            make(field, parent);
            label(nameOf(field))->hide();
            widget(nameOf(field))->hide();
        }
    }
}

void FieldTable::fill(QStandardItem *item, Unknown unknown) const
{
    for (const Field &field : m_fields) {
        if (field.role == noRole) {
            continue;
        }
        if (field.defaultValue) {
            writeDefault(field, item);
        }
        show(field, item->data(field.role), unknown);
    }
}

void FieldTable::save(QStandardItem *item) const
{
    for (const Field &field : m_fields) {
        if (field.role != noRole) {
            item->setData(valueOf(field), field.role);
        }
    }
}

void FieldTable::erase(QStandardItem *item) const
{
    for (const Field &field : m_fields) {
        if (field.role != noRole) {
            item->setData(QVariant(), field.role);
        }
    }
}

void FieldTable::clear() const
{
    for (const Field &field : m_fields) {
        show(field, field.kind == FieldKind::OnOff ? QVariant(QStringLiteral("on")) : QVariant(),
             Unknown::SelectFallback);
        if (QComboBox *box = comboBox(nameOf(field))) {
            box->setCurrentIndex(0);
        }
    }
}

void FieldTable::resetEmptyLists(const QStandardItem *item) const
{
    for (const Field &field : m_fields) {
        if (field.kind == FieldKind::List && item->data(field.role).toString().isEmpty()) {
            comboBox(nameOf(field))->setCurrentIndex(0);
        }
    }
}

QVariant FieldTable::value(const QString &name) const
{
    for (const Field &field : m_fields) {
        if (nameOf(field) == name) {
            return valueOf(field);
        }
    }
    return {};
}

QString FieldTable::text(const QString &name) const
{
    return value(name).toString();
}

void FieldTable::setText(const QString &name, const QString &text) const
{
    for (const Field &field : m_fields) {
        if (nameOf(field) == name) {
            show(field, text, Unknown::Keep);
        }
    }
}

QWidget *FieldTable::widget(const QString &name) const
{
    return m_widgets.value(name);
}

QLineEdit *FieldTable::lineEdit(const QString &name) const
{
    return qobject_cast<QLineEdit *>(widget(name));
}

QComboBox *FieldTable::comboBox(const QString &name) const
{
    return qobject_cast<QComboBox *>(widget(name));
}

QLabel *FieldTable::label(const QString &name) const
{
    return m_labels.value(name);
}

int FieldTable::labelWidth() const
{
    int width = 0;
    for (const QLabel *label : m_labels) {
        width = qMax(width, label->sizeHint().width());
    }
    return width;
}

void FieldTable::setLabelWidth(int width) const
{
    for (QLabel *label : m_labels) {
        label->setMinimumWidth(width);
    }
}

void FieldTable::align(const QVector<const FieldTable *> &tables)
{
    int widest = 0;
    for (const FieldTable *table : tables) {
        widest = qMax(widest, table->labelWidth());
    }
    for (const FieldTable *table : tables) {
        table->setLabelWidth(widest);
    }
}

void FieldTable::make(const Field &field, QWidget *parent)
{
    auto *label = new QLabel(translated(field, field.label), parent);
    QWidget *widget = makeWidget(field, parent);
    widget->setObjectName(nameOf(field));
    label->setBuddy(widget);
    m_widgets.insert(nameOf(field), widget);
    m_labels.insert(nameOf(field), label);
}

QWidget *FieldTable::makeWidget(const Field &field, QWidget *parent)
{
    switch (field.kind) {
    case FieldKind::List:
    case FieldKind::Coded:
        return makeList(field, parent);
    case FieldKind::Check: {
        // As high as its neighbours, so that rows and labels keep one distance.
        auto *box = new QCheckBox(parent);
        box->setMinimumHeight(QLineEdit().sizeHint().height());
        return box;
    }
    case FieldKind::OnOff:
        return makeRadios(field, onOff(), parent);
    case FieldKind::Numbered:
        return makeRadios(field, numbers(field), parent);
    case FieldKind::Script: {
        auto *edit = new QTextEdit(parent);
        edit->setAcceptRichText(false);
        edit->setTabChangesFocus(true); // else Tab would never leave it
        return edit;
    }
    case FieldKind::Text:
    case FieldKind::Password:
    case FieldKind::ReadOnly:
        break;
    }
    auto *edit = new QLineEdit(parent);
    edit->setReadOnly(field.kind == FieldKind::ReadOnly);
    edit->setEchoMode(field.kind == FieldKind::Password ? QLineEdit::Password : QLineEdit::Normal);
    edit->setValidator(validatorFor(field, parent));
    return edit;
}

QWidget *FieldTable::makeList(const Field &field, QWidget *parent) const
{
    auto *box = new QComboBox(parent);
    for (const QString &entry : field.entries) {
        box->addItem(translated(field, entry.toLatin1().constData()));
    }
    for (const Choice &choice : field.choices) {
        box->addItem(translated(field, choice.text), choice.code);
    }
    return box;
}

QWidget *FieldTable::makeRadios(const Field &field, const QStringList &suffixes, QWidget *parent) const
{
    auto *group = new QWidget(parent);
    group->setObjectName(nameOf(field));
    auto *row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    for (int index = 0; index < suffixes.size(); ++index) {
        const QByteArray text = field.entries.value(index).toLatin1();
        auto *button = new QRadioButton(translated(field, text.constData()), group);
        button->setObjectName(nameOf(field) + suffixes.at(index));
        row->addWidget(button);
    }
    row->addStretch();
    group->setFocusProxy(radio(group, suffixes.first()));
    return group;
}

QValidator *FieldTable::validatorFor(const Field &field, QWidget *parent)
{
    const QString key = QString::number(int(field.check)) + QLatin1String(field.pattern);
    if (!m_validators.contains(key)) {
        QValidator *validator = nullptr;
        switch (field.check) {
        case FieldCheck::None:
            break;
        case FieldCheck::Ipv4:
            validator = ipv4Validator(parent);
            break;
        case FieldCheck::HostName:
            validator = hostNameValidator(parent);
            break;
        case FieldCheck::NoCjk:
            validator = noCjkValidator(parent);
            break;
        case FieldCheck::Port:
            validator = portValidator(parent);
            break;
        case FieldCheck::Integer:
            validator = integerValidator(parent);
            break;
        case FieldCheck::Pattern:
            validator = new QRegularExpressionValidator(
                QRegularExpression(QString::fromLatin1(field.pattern)), parent);
            break;
        }
        m_validators.insert(key, validator);
    }
    return m_validators.value(key);
}

QString FieldTable::translated(const Field &field, const char *source) const
{
    return field.isTranslated ? QCoreApplication::translate(m_context, source) : QString::fromUtf8(source);
}

QVariant FieldTable::valueOf(const Field &field) const
{
    QWidget *shown = widget(nameOf(field));
    switch (field.kind) {
    case FieldKind::List:
        return qobject_cast<QComboBox *>(shown)->currentText();
    case FieldKind::Check:
        return qobject_cast<QCheckBox *>(shown)->isChecked();
    case FieldKind::OnOff:
        return radio(shown, QStringLiteral("On"))->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
    case FieldKind::Coded:
        return qobject_cast<QComboBox *>(shown)->currentData();
    case FieldKind::Numbered:
        return checkedNumber(shown, field);
    case FieldKind::Script:
        return qobject_cast<QTextEdit *>(shown)->toPlainText();
    case FieldKind::Text:
    case FieldKind::Password:
    case FieldKind::ReadOnly:
        break;
    }
    return qobject_cast<QLineEdit *>(shown)->text();
}

void FieldTable::show(const Field &field, const QVariant &value, Unknown unknown) const
{
    QWidget *shown = widget(nameOf(field));
    const QString text = value.toString();
    switch (field.kind) {
    case FieldKind::List:
        showEntry(field, qobject_cast<QComboBox *>(shown), text, unknown);
        break;
    case FieldKind::Check:
        qobject_cast<QCheckBox *>(shown)->setChecked(ProjectTree::isTrue(value));
        break;
    case FieldKind::OnOff:
        check(radio(shown, QStringLiteral("On")), text == QLatin1String("on"));
        check(radio(shown, QStringLiteral("Off")), text == QLatin1String("off"));
        break;
    case FieldKind::Coded:
        showCode(field, qobject_cast<QComboBox *>(shown), value, unknown);
        break;
    case FieldKind::Numbered: {
        QRadioButton *numbered = radio(shown, text);
        (numbered ? numbered : radio(shown, QStringLiteral("1")))->setChecked(true);
        break;
    }
    case FieldKind::Script:
        qobject_cast<QTextEdit *>(shown)->setPlainText(text);
        break;
    case FieldKind::Text:
    case FieldKind::Password:
    case FieldKind::ReadOnly:
        qobject_cast<QLineEdit *>(shown)->setText(text);
        break;
    }
}

void FieldTable::showEntry(const Field &field, QComboBox *box, const QString &text, Unknown unknown) const
{
    int index = box->findData(text, Qt::DisplayRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0 && unknown == Unknown::SelectFallback) {
        index = field.listFallback ? box->findText(translated(field, field.listFallback)) : 0;
    }
    if (index >= 0) {
        box->setCurrentIndex(index);
    }
}

void FieldTable::showCode(const Field &field, QComboBox *box, QVariant code, Unknown unknown)
{
    code.convert(int(field.choices.first().code.type())); // a document's codes are texts
    const int index = box->findData(code);
    if (index >= 0 || unknown == Unknown::SelectFallback) {
        box->setCurrentIndex(index < 0 && !field.unknownShowsNone ? 0 : index);
    }
}

#include "widgets/fieldtable.h"

#include "model/projecttree.h"
#include "widgets/validators.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStandardItem>

namespace {

QString nameOf(const Field &field)
{
    return QString::fromLatin1(field.name);
}

QRadioButton *radio(const QWidget *pair, const char *suffix)
{
    return pair->findChild<QRadioButton *>(pair->objectName() + QLatin1String(suffix));
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
        if (field.defaultValue && item->data(field.role).toString().isEmpty()) {
            item->setData(QString::fromLatin1(field.defaultValue), field.role);
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
        if (field.kind == FieldKind::List) {
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

void FieldTable::make(const Field &field, QWidget *parent)
{
    auto *label = new QLabel(QCoreApplication::translate(m_context, field.label), parent);
    QWidget *widget = makeWidget(field, parent);
    widget->setObjectName(nameOf(field));
    label->setBuddy(widget);
    m_widgets.insert(nameOf(field), widget);
    m_labels.insert(nameOf(field), label);
}

QWidget *FieldTable::makeWidget(const Field &field, QWidget *parent)
{
    switch (field.kind) {
    case FieldKind::List: {
        auto *box = new QComboBox(parent);
        for (const QString &entry : field.entries) {
            box->addItem(QCoreApplication::translate(m_context, entry.toLatin1().constData()));
        }
        return box;
    }
    case FieldKind::Check: {
        // As high as its neighbours, so that rows and labels keep one distance.
        auto *box = new QCheckBox(parent);
        box->setMinimumHeight(QLineEdit().sizeHint().height());
        return box;
    }
    case FieldKind::OnOff:
        return makeOnOff(field, parent);
    case FieldKind::Text:
    case FieldKind::Password:
    case FieldKind::ReadOnly:
        break;
    }
    auto *edit = new QLineEdit(parent);
    edit->setReadOnly(field.kind == FieldKind::ReadOnly);
    edit->setEchoMode(field.kind == FieldKind::Password ? QLineEdit::Password : QLineEdit::Normal);
    edit->setValidator(validatorFor(field.check, parent));
    return edit;
}

QWidget *FieldTable::makeOnOff(const Field &field, QWidget *parent) const
{
    auto *pair = new QWidget(parent);
    auto *row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    const char *const suffixes[] = {"On", "Off"};
    for (int index = 0; index < 2; ++index) {
        auto *button = new QRadioButton(
            QCoreApplication::translate(m_context, field.entries.value(index).toLatin1().constData()), pair);
        button->setObjectName(nameOf(field) + QLatin1String(suffixes[index]));
        row->addWidget(button);
    }
    row->addStretch();
    pair->setFocusProxy(radio(pair, "On"));
    return pair;
}

QValidator *FieldTable::validatorFor(FieldCheck check, QWidget *parent)
{
    const auto key = static_cast<int>(check);
    if (!m_validators.contains(key)) {
        QValidator *validator = nullptr;
        switch (check) {
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
        }
        m_validators.insert(key, validator);
    }
    return m_validators.value(key);
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
        return radio(shown, "On")->isChecked() ? QStringLiteral("on") : QStringLiteral("off");
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
    case FieldKind::List: {
        auto *box = qobject_cast<QComboBox *>(shown);
        int index = box->findData(text, Qt::DisplayRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (index < 0 && unknown == Unknown::SelectFallback) {
            index = field.listFallback
                ? box->findText(QCoreApplication::translate(m_context, field.listFallback))
                : 0;
        }
        if (index >= 0) {
            box->setCurrentIndex(index);
        }
        break;
    }
    case FieldKind::Check:
        qobject_cast<QCheckBox *>(shown)->setChecked(ProjectTree::isTrue(value));
        break;
    case FieldKind::OnOff:
        check(radio(shown, "On"), text == QLatin1String("on"));
        check(radio(shown, "Off"), text == QLatin1String("off"));
        break;
    case FieldKind::Text:
    case FieldKind::Password:
    case FieldKind::ReadOnly:
        qobject_cast<QLineEdit *>(shown)->setText(text);
        break;
    }
}

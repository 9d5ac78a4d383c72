#include "forms/fieldgroup.h"

#include "definitions/choices.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QRegularExpressionValidator>

#include <algorithm>

FieldGroup::FieldGroup(const char *className, Definitions::Kind kind)
    : m_className(className)
    , m_kind(kind)
{
}

void FieldGroup::setLayout(QFormLayout *layout)
{
    m_layout = layout;
    m_page = layout->parentWidget();
}

void FieldGroup::appendRow(const FormField *field)
{
    m_layout->addRow(field->label(), field->widget());
}

void FieldGroup::fill(QStandardItem *item)
{
    for (const auto &field : m_fields) {
        field->fill(item);
    }
}

void FieldGroup::refill(QStandardItem *item)
{
    for (const auto &field : m_fields) {
        field->refill(item, m_onRefill);
    }
}

void FieldGroup::save(QStandardItem *item)
{
    for (const auto &field : m_fields) {
        field->save(item);
    }
}

void FieldGroup::clear()
{
    for (const auto &field : m_fields) {
        field->clear();
    }
}

void FieldGroup::erase(QStandardItem *item) const
{
    for (const auto &field : m_fields) {
        field->erase(item);
    }
}

bool FieldGroup::isComplete() const
{
    return std::all_of(m_fields.begin(), m_fields.end(), [](const auto &field) { return field->widget(); });
}

QVariantList FieldGroup::values() const
{
    QVariantList values;
    for (const auto &field : m_fields) {
        values.append(field->value());
    }
    return values;
}

void FieldGroup::setValues(const QVariantList &values)
{
    int index = 0;
    for (const auto &field : m_fields) {
        field->setText(values.value(index++).toString());
    }
}

int FieldGroup::labelWidth() const
{
    int width = 0;
    for (const auto &field : m_fields) {
        width = qMax(width, field->label()->sizeHint().width());
    }
    return width;
}

void FieldGroup::setLabelWidth(int width)
{
    for (const auto &field : m_fields) {
        field->label()->setMinimumWidth(width);
    }
}

void FieldGroup::align(const QVector<FieldGroup *> &groups)
{
    int widest = 0;
    for (const FieldGroup *group : groups) {
        widest = qMax(widest, group->labelWidth());
    }
    for (FieldGroup *group : groups) {
        group->setLabelWidth(widest);
    }
}

QString FieldGroup::translated(const char *source) const
{
    return QCoreApplication::translate(m_className, source);
}

const char *FieldGroup::defaultOf(int role) const
{
    const Definitions::Value *value = Definitions::find(m_kind, role);
    return value ? value->defaultValue : nullptr;
}

QStringList FieldGroup::choicesOf(int role) const
{
    const Definitions::Value *value = Definitions::find(m_kind, role);
    return Choices::list(value ? value->choices : nullptr);
}

const char *FieldGroup::keyOf(int role) const
{
    return Definitions::valueOf(m_kind, role).key;
}

QValidator *FieldGroup::validator(MakeValidator maker)
{
    QValidator *&made = m_checks[maker];
    if (!made) {
        made = maker(m_page);
    }
    return made;
}

QValidator *FieldGroup::validator(const QString &pattern)
{
    QValidator *&made = m_patterns[pattern];
    if (!made) {
        made = new QRegularExpressionValidator(QRegularExpression(pattern), m_page);
    }
    return made;
}

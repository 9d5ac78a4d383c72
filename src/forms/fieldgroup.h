#pragma once

#include "definitions/values.h"
#include "forms/fields.h"
#include "forms/formpart.h"

#include <QHash>
#include <QVector>

#include <map>
#include <memory>
#include <vector>

class QFormLayout;

// Labelled fields of a form, in the order in which they are saved. It owns the fields; the widgets belong to
// the page that they are on, which must outlive any use of the group.
class FieldGroup : public FormPart
{
public:
    // The class name of the form, under which source texts are looked up, and what its items are, which tells
    // the rows of the fields' roles.
    FieldGroup(const char *className, Definitions::Kind kind);

    // Fields are added as rows of this layout, which is already set on a widget, or as rows of the next one
    // that is given.
    void setLayout(QFormLayout *layout);
    // For fields in no layout: their parent from here on.
    void setPage(QWidget *page) { m_page = page; }

    // Adds a field whose objectName is the key of its role's first row, the widget being the buddy of its
    // label, whose text is already translated.
    template <class F> F *add(int role, const QString &label) { return add<F>(role, nullptr, label); }
    // Adds such a field with a source text for the label, for rows that several forms have.
    template <class F> F *add(int role, const char *label) { return add<F>(role, translated(label)); }
    // Adds a field whose objectName is given, which Qt::DisplayRole and FormField::noRole need, since they
    // have no row; null for the key.
    template <class F> F *add(int role, const char *name, const QString &label)
    {
        F *field = make<F>(role, name, label);
        appendRow(field);
        return field;
    }
    template <class F> F *add(int role, const char *name, const char *label)
    {
        return add<F>(role, name, translated(label));
    }
    // Adds a field that only carries a value: in no layout, and hidden.
    template <class F> F *addUnseen(int role, const char *name, const QString &label)
    {
        F *field = make<F>(role, name, label);
        field->setVisible(false);
        return field;
    }

    // These three say what is done otherwise when a form that is open turns to another item. Lists stay as
    // they are where the item's text is not among their entries, rather than go to the fallback.
    void keepUnknownOnRefill() { m_onRefill.unknownStays = true; }
    // Lists go to their first entry where the item has no text.
    void resetEmptyOnRefill() { m_onRefill.emptyGoesFirst = true; }
    // Empty roles are not given their defaults.
    void keepEmptyOnRefill() { m_onRefill.emptyStays = true; }

    void fill(QStandardItem *item) override;
    void refill(QStandardItem *item) override;
    void save(QStandardItem *item) override;
    void clear() override;
    // Sets the roles to an invalid QVariant.
    void erase(QStandardItem *item) const;
    // Whether no field's widget was deleted from outside; the next two need them all.
    bool isComplete() const;
    // What the fields show, in their order, for fields that are kept as a row.
    QVariantList values() const;
    void setValues(const QVariantList &values);

    // The width that the widest label asks for, in pixels.
    int labelWidth() const;
    // Makes every label at least that wide.
    void setLabelWidth(int width);
    // Makes all labels of these groups as wide as the widest, so that the fields are in one line.
    static void align(const QVector<FieldGroup *> &groups);

    QString translated(const char *source) const;
    // What the row of the role says is written into an empty one; null for none.
    const char *defaultOf(int role) const;
    // What the row of the role says its list offers.
    QStringList choicesOf(int role) const;
    // The page that is being filled.
    QWidget *page() const { return m_page; }
    // One validator serves all fields of the group with the same check or pattern.
    QValidator *validator(MakeValidator maker);
    QValidator *validator(const QString &pattern);

private:
    template <class F> F *make(int role, const char *name, const QString &label)
    {
        m_fields.push_back(std::make_unique<F>(*this, role, name ? name : keyOf(role), label));
        return static_cast<F *>(m_fields.back().get());
    }
    void appendRow(const FormField *field);
    const char *keyOf(int role) const;

    const char *m_className;
    Definitions::Kind m_kind;
    QFormLayout *m_layout = nullptr;
    QWidget *m_page = nullptr;
    std::vector<std::unique_ptr<FormField>> m_fields;
    FormField::OnRefill m_onRefill;
    std::map<MakeValidator, QValidator *> m_checks;
    QHash<QString, QValidator *> m_patterns;
};

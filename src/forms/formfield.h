#pragma once

#include "definitions/values.h"

#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWidget>

class FieldGroup;
class QLabel;
class QStandardItem;

// One labelled input of a form, and the role of the item that it shows. FieldGroup makes and owns it.
class FormField
{
public:
    static constexpr int noRole = Definitions::noRole;

    // What is done otherwise when the form, which is open already, turns to another item; see FieldGroup.
    struct OnRefill {
        bool unknownStays = false;
        bool emptyGoesFirst = false;
        bool emptyStays = false;
    };

    // The widget is a child of the group's page.
    FormField(const FieldGroup &group, int role, const char *name, const QString &label, QWidget *widget);
    virtual ~FormField() = default;
    FormField(const FormField &) = delete;
    FormField &operator=(const FormField &) = delete;

    QLabel *label() const { return m_label; }
    // Null once it was deleted from outside.
    QWidget *widget() const { return m_widget; }
    // These two act on the widget and on its label.
    void setEnabled(bool enabled);
    void setVisible(bool visible);

    // Writes the default into an empty role, then shows the role.
    void fill(QStandardItem *item);
    void refill(QStandardItem *item, const OnRefill &onRefill);
    // Writes what the field shows.
    void save(QStandardItem *item) const;
    void erase(QStandardItem *item) const;
    virtual void clear() = 0;

    // What the field shows, as it is stored.
    virtual QVariant value() const = 0;
    QString text() const { return value().toString(); }
    virtual void setText(const QString &text) { show(text); }

protected:
    virtual void show(const QVariant &value) = 0;
    virtual void showAgain(const QVariant &value, const OnRefill &) { show(value); }
    // A default as it is stored.
    virtual QVariant fromDefault(const QString &text) const { return text; }
    virtual bool isEmpty(const QVariant &value) const { return value.toString().isEmpty(); }

private:
    void writeDefault(QStandardItem *item) const;

    int m_role;
    const char *m_default; // for an empty role; null for none
    QPointer<QWidget> m_widget;
    QLabel *m_label;
};

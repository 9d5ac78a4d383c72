#pragma once

#include "formtest.h"
#include "language.h"
#include "model/itemroles.h"
#include "servers/serveralimqtteditdialog.h"
#include "servers/servereditdialog.h"
#include "servers/serverhuaweimqtteditdialog.h"
#include "servers/serveronenetmqtteditdialog.h"
#include "servers/serveropcuaeditdialog.h"

#include <QComboBox>
#include <QFormLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegExpValidator>
#include <QRegularExpressionValidator>
#include <QTextEdit>

// What the tests of the forms of Servers share.
namespace ServerFormTest {

// The form of a protocol; null for one that is not of this family.
inline ServerForm *make(const QString &protocol, QStandardItem *item, Workspace *workspace)
{
    if (protocol == QLatin1String("MQTT")) {
        return new ServerEditDialog(item, workspace);
    }
    if (protocol == QLatin1String("AliMQTT")) {
        return new ServerAliMQTTEditDialog(item, workspace);
    }
    if (protocol == QLatin1String("OneNetMQTT")) {
        return new ServerOneNetMQTTEditDialog(item, workspace);
    }
    if (protocol == QLatin1String("HuaWeiMQTT")) {
        return new ServerHuaWeiMQTTEditDialog(item, workspace);
    }
    return protocol == QLatin1String("OpcUaServer") ? new ServerOPCUAEditDialog(item, workspace) : nullptr;
}

inline QString checkOf(const QValidator *validator)
{
    const auto *number = qobject_cast<const QIntValidator *>(validator);
    if (number) {
        return QString(" %1..%2").arg(number->bottom()).arg(number->top());
    }
    if (const auto *pattern = qobject_cast<const QRegularExpressionValidator *>(validator)) {
        const QString host = "^([a-zA-Z0-9]([-a-zA-Z0-9]*[a-zA-Z0-9])?\\.)+[a-zA-Z]{2,}$";
        return pattern->regularExpression().pattern() == host ? QString(" host") : " ?";
    }
    if (const auto *pattern = qobject_cast<const QRegExpValidator *>(validator)) {
        const QString noCjk = "^[^\\x04BB-\\xFFFD]*$";
        return pattern->regExp().pattern() == noCjk ? QString(" no CJK") : " ?";
    }
    return validator ? QString(" ?") : QString();
}

// What an input is, in a few words.
inline QString kindOf(const QWidget *input)
{
    if (const auto *edit = qobject_cast<const QLineEdit *>(input)) {
        return "line" + (edit->isReadOnly() ? QString(" read-only") : QString())
            + (edit->echoMode() == QLineEdit::Password ? QString(" hidden") : QString())
            + checkOf(edit->validator());
    }
    if (const auto *list = qobject_cast<const QComboBox *>(input)) {
        return "list " + FormTest::entriesOf(list).join(QLatin1Char('|'))
            + (list->isEnabled() ? QString() : " disabled");
    }
    if (qobject_cast<const QTextEdit *>(input)) {
        return "script";
    }
    QStringList buttons;
    for (const QRadioButton *button : input->findChildren<QRadioButton *>()) {
        buttons.append(button->text());
    }
    return "radio " + buttons.join(QLatin1Char('|'));
}

// The rows that are not hidden, in their order: "<label> <objectName>: <kind>".
inline QStringList fieldsOf(const QWidget &form)
{
    QStringList rows;
    const auto *layout = form.findChild<QFormLayout *>();
    for (int row = 0; row < layout->rowCount(); ++row) {
        const auto *label = qobject_cast<QLabel *>(layout->itemAt(row, QFormLayout::LabelRole)->widget());
        const QWidget *input = layout->itemAt(row, QFormLayout::FieldRole)->widget();
        if (!input->isHidden()) {
            rows.append(label->text() + QLatin1Char(' ') + input->objectName() + ": " + kindOf(input)
                        + (label->buddy() == input ? QString() : " no buddy"));
        }
    }
    return rows;
}

template <typename Widget> Widget *input(const QWidget &form, const char *name)
{
    return form.findChild<Widget *>(QLatin1String(name));
}

// "<name>=<what the input shows>" in the order of the rows.
inline QStringList valuesOf(const QWidget &form)
{
    QStringList values;
    const auto *layout = form.findChild<QFormLayout *>();
    for (int row = 0; row < layout->rowCount(); ++row) {
        const QWidget *shown = layout->itemAt(row, QFormLayout::FieldRole)->widget();
        QString value;
        if (const auto *edit = qobject_cast<const QLineEdit *>(shown)) {
            value = edit->text();
        } else if (const auto *list = qobject_cast<const QComboBox *>(shown)) {
            value = list->currentText();
        } else if (const auto *script = qobject_cast<const QTextEdit *>(shown)) {
            value = script->toPlainText();
        } else {
            for (const QRadioButton *button : shown->findChildren<QRadioButton *>()) {
                value += button->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
            }
        }
        values.append(shown->objectName() + QLatin1Char('=') + value);
    }
    return values;
}

} // namespace ServerFormTest

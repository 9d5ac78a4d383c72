#pragma once

#include "catalogue.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

class QTranslator;
class QWidget;

// Looks the texts of forms up in a Chinese catalogue under the classes of the forms that show them.
class FormTexts
{
public:
    // The texts whose translations are looked for, by their contexts; neither is kept longer than the object.
    FormTexts(const Catalogue &program, const Catalogue &toolkit, const QTranslator &translator);

    // Labels, buttons, titles, entries of lists, headers, placeholders and tool tips below and in the widget,
    // hidden ones too, that are neither in the context of the form around them nor data: a line each.
    QStringList foreign(const QWidget *root) const;

private:
    QStringList contextsOf(const QWidget *widget) const;
    bool isKnown(const QString &text, const QStringList &contexts) const;

    QSet<QString> m_forms;                         // contexts of the program
    QSet<QString> m_sources;                       // that have a translation
    QHash<QString, QSet<QString>> m_chinese;       // by context, as the translator has it
    QHash<QString, QRegularExpression> m_patterns; // by context, of those with values in them
};

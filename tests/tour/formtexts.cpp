#include "formtexts.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTranslator>

#include <algorithm>

namespace {

// Classes whose texts stand in the contexts of others.
QStringList contextsOfClass(const QString &name)
{
    static const QHash<QString, QStringList> others = {
        {"CMainWindow", {"CMainWindow", "MainWindow"}},
        // Which lists the docks of the window.
        {"CStatusDialog", {"CStatusDialogClass", "CMainWindow"}},
        {"HostAddressDialog", {"BoxEditDialog"}},
        {"MonitoringPage", {"MonitoringPage", "CMainWindow"}},
    };
    return others.value(name, {name});
}

// Texts that stay English on purpose: a list that carries a value and is never seen, and a title that is
// hidden by that of the tab around it.
bool isLeftAlone(const QWidget *widget)
{
    return widget->objectName() == QLatin1String("protocolKey")
        || QLatin1String(widget->metaObject()->className()) == QLatin1String("EditProjectDialog");
}

bool isChinese(const QString &text)
{
    static const QRegularExpression pattern("[\\x{2E80}-\\x{FFEF}]");
    return text.contains(pattern);
}

// Of the translations with values in them or behind them.
QRegularExpression patternOf(const QSet<QString> &translations)
{
    static const QRegularExpression value("\\\\?%\\d");
    QStringList patterns;
    for (const QString &translation : translations) {
        QString pattern = QRegularExpression::escape(translation).replace(value, ".*");
        if (translation.endsWith(QChar(0xff1a))) {
            patterns.append(pattern + ".*");
        } else if (pattern.contains(".*")) {
            patterns.append(pattern);
        }
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(patterns.join(QLatin1Char('|'))));
}

QStringList textsOf(const QWidget *widget)
{
    QStringList texts{widget->windowTitle(), widget->toolTip()};
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        texts.append(label->text());
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        texts.append(button->text());
    } else if (const auto *group = qobject_cast<const QGroupBox *>(widget)) {
        texts.append(group->title());
    } else if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
        texts.append(edit->placeholderText());
    } else if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        for (int index = 0; index < box->count(); ++index) {
            texts.append(box->itemText(index));
        }
    } else if (const auto *tabs = qobject_cast<const QTabBar *>(widget)) {
        for (int index = 0; index < tabs->count(); ++index) {
            texts.append(tabs->tabText(index));
        }
    } else if (const auto *header = qobject_cast<const QHeaderView *>(widget)) {
        for (int section = 0; section < header->count(); ++section) {
            texts.append(header->model()->headerData(section, header->orientation()).toString());
        }
    } else if (const auto *menu = qobject_cast<const QMenu *>(widget)) {
        texts.append(menu->title());
        const auto actions = menu->actions();
        for (const QAction *action : actions) {
            texts.append(action->text());
        }
    }
    return texts;
}

} // namespace

FormTexts::FormTexts(const Catalogue &program, const Catalogue &toolkit, const QTranslator &translator)
{
    Catalogue all = program;
    all.insert(toolkit);
    QSet<QString> contexts;
    for (auto it = all.cbegin(); it != all.cend(); ++it) {
        contexts.insert(it.key().at(0));
        if (isChinese(it->texts.first())) {
            m_sources.insert(it.key().at(1));
        }
    }
    for (const QString &context : qAsConst(contexts)) {
        for (auto it = all.cbegin(); it != all.cend(); ++it) {
            const QByteArray source = it.key().at(1).toUtf8();
            const QString text = translator.translate(context.toUtf8().constData(), source.constData());
            if (!text.isEmpty()) {
                m_chinese[context].insert(text);
            }
        }
        m_patterns.insert(context, patternOf(m_chinese.value(context)));
    }
    for (auto it = program.cbegin(); it != program.cend(); ++it) {
        if (m_chinese.contains(it.key().at(0))) {
            m_forms.insert(it.key().at(0));
        }
    }
}

QStringList FormTexts::foreign(const QWidget *root) const
{
    QStringList found;
    QList<const QWidget *> widgets{root};
    const auto children = root->findChildren<QWidget *>();
    std::copy(children.cbegin(), children.cend(), std::back_inserter(widgets));
    const QStringList everywhere = m_chinese.keys();
    for (const QWidget *widget : qAsConst(widgets)) {
        const QStringList contexts = contextsOf(widget);
        const QStringList texts = isLeftAlone(widget) ? QStringList() : textsOf(widget);
        for (const QString &text : texts) {
            const bool isForeign = isChinese(text) ? isKnown(text, everywhere) && !isKnown(text, contexts)
                                                   : m_sources.contains(text);
            if (isForeign) {
                found.append(text + " in " + contexts.last());
            }
        }
    }
    found.removeDuplicates();
    return found;
}

// From the widget's own, which may be of the toolkit, to the first of the program.
QStringList FormTexts::contextsOf(const QWidget *widget) const
{
    QStringList contexts;
    for (; widget; widget = widget->parentWidget()) {
        const QStringList own = contextsOfClass(QLatin1String(widget->metaObject()->className()));
        contexts += own;
        if (m_forms.contains(own.first())) {
            break;
        }
    }
    return contexts;
}

bool FormTexts::isKnown(const QString &text, const QStringList &contexts) const
{
    return std::any_of(contexts.cbegin(), contexts.cend(), [&](const QString &context) {
        return m_chinese.value(context).contains(text) || m_patterns.value(context).match(text).hasMatch();
    });
}

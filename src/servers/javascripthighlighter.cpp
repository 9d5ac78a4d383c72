#include "servers/javascripthighlighter.h"

JavaScriptHighlighter::JavaScriptHighlighter(QTextDocument *parent)
    : QSyntaxHighlighter(parent)
{
    const struct {
        const char *pattern;
        Qt::GlobalColor colour;
    } rules[] = {
        {"\\bvar\\b", Qt::blue},         {"\\bfunction\\b", Qt::blue}, {"\\breturn\\b", Qt::blue},
        {"\\bif\\b", Qt::blue},          {"\\belse\\b", Qt::blue},     {"\\bfor\\b", Qt::blue},
        {"\\bwhile\\b", Qt::blue},       {"\\bdo\\b", Qt::blue},       {"\\bswitch\\b", Qt::blue},
        {"\\bcase\\b", Qt::blue},        {"\\bbreak\\b", Qt::blue},    {"\\bcontinue\\b", Qt::blue},
        {"\\b\\d+\\b", Qt::darkMagenta}, {"//[^\n]*", Qt::darkGreen},
    };
    for (const auto &rule : rules) {
        QTextCharFormat format;
        format.setForeground(rule.colour);
        m_rules.append({QRegularExpression(QLatin1String(rule.pattern)), format});
    }
}

void JavaScriptHighlighter::highlightBlock(const QString &text)
{
    for (const Rule &rule : qAsConst(m_rules)) {
        for (auto match = rule.pattern.globalMatch(text); match.hasNext();) {
            const QRegularExpressionMatch found = match.next();
            setFormat(found.capturedStart(0), found.capturedLength(0), rule.format);
        }
    }
}

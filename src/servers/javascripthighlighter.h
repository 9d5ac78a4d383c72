#pragma once

#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <QVector>

// Colours keywords, numbers and line comments of a script, line by line: neither block comments nor strings
// are known, so that "//" within a string begins a comment.
class JavaScriptHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT
public:
    // The document owns it.
    explicit JavaScriptHighlighter(QTextDocument *parent);

protected:
    void highlightBlock(const QString &text) override;

private:
    struct Rule {
        QRegularExpression pattern;
        QTextCharFormat format;
    };
    QVector<Rule> m_rules; // a later one paints over an earlier one
};

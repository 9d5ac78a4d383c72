#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QTranslator>

// An interface language while it lives: a few texts of the main window, or a prefix for all of them.
class Language : public QTranslator
{
public:
    // Each text of the context CMainWindow is the source behind the prefix, unless it is in the table.
    explicit Language(const QString &prefix, const QHash<QString, QString> &texts = {})
        : m_prefix(prefix)
        , m_texts(texts)
    {
        QCoreApplication::installTranslator(this);
    }
    ~Language() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (qstrcmp(context, "CMainWindow") != 0) {
            return QString();
        }
        const QString text = QString::fromUtf8(source);
        return m_texts.value(text, m_prefix + text);
    }
    bool isEmpty() const override { return false; }

private:
    QString m_prefix;
    QHash<QString, QString> m_texts;
};

// An interface language in which each text of ours is its source behind a mark.
class Marked : public QTranslator
{
public:
    Marked() { QCoreApplication::installTranslator(this); }
    ~Marked() override { QCoreApplication::removeTranslator(this); }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return *context ? QLatin1Char('*') + QString::fromUtf8(source) : QString();
    }
    bool isEmpty() const override { return false; }
};

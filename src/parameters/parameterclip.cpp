#include "parameters/parameterclip.h"

#include "parameters/parameterrules.h"
#include "parameters/rowcheck.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

constexpr char place[] = QT_TRANSLATE_NOOP("ParameterTable", "Row %1");
constexpr QChar quote = QLatin1Char('"');

bool isLineBreak(QChar character)
{
    return character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

QString cellText(QString text)
{
    const bool plain = std::none_of(text.cbegin(), text.cend(), [](QChar character) {
        return character == QLatin1Char('\t') || character == quote || isLineBreak(character);
    });
    return plain ? text : quote + text.replace(quote, QLatin1String("\"\"")) + quote;
}

// Takes cells from a text, from its beginning to its end.
class CellReader
{
public:
    explicit CellReader(const QString &text)
        : m_text(text)
    {
    }
    bool atEnd() const { return m_at >= m_text.size(); }

    QStringList takeRow()
    {
        QStringList cells{takeCell()};
        while (!atEnd() && m_text.at(m_at) == QLatin1Char('\t')) {
            ++m_at;
            cells.append(takeCell());
        }
        if (m_text.midRef(m_at, 2) == QLatin1String("\r\n")) {
            ++m_at;
        }
        ++m_at;
        return cells;
    }

private:
    // Up to the tab or the line break behind it.
    QString takeCell()
    {
        QString cell = takeQuoted();
        const int from = m_at;
        while (!atEnd() && m_text.at(m_at) != QLatin1Char('\t') && !isLineBreak(m_text.at(m_at))) {
            ++m_at;
        }
        return cell + m_text.mid(from, m_at - from);
    }

    // What the quotes at this place hold; a quote without another to close it is a character like others.
    QString takeQuoted()
    {
        if (atEnd() || m_text.at(m_at) != quote) {
            return {};
        }
        int end = m_text.indexOf(quote, m_at + 1);
        while (end >= 0 && m_text.midRef(end + 1, 1) == quote) { // a doubled one stands for itself
            end = m_text.indexOf(quote, end + 2);
        }
        if (end < 0) {
            return {};
        }
        const QString held = m_text.mid(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        return QString(held).replace(QLatin1String("\"\""), quote);
    }

    const QString &m_text;
    int m_at = 0;
};

// The columns with values; the last one is the button's.
int widthOf(const ParameterVariant &variant)
{
    return variant.columns.size() - 1;
}

bool isHeader(const RowCheck &check, const QStringList &cells, int width)
{
    return cells.size() >= width && cells == check.headers().mid(0, cells.size());
}

struct Verdict {
    bool stays;
    QString fault; // in words; null if nothing is wrong
};

Verdict verdictOn(const QStringList &cells, const RowCheck &check, const ParameterVariant &variant)
{
    if (cells.size() < qMin(RowCheck::leastFields, widthOf(variant))) {
        return {false, check.tooShort()};
    }
    const int bad = check.badColumn(cells);
    if (bad >= 0 && check.refusalOf(bad)) {
        return {false, check.fault(bad, cells)};
    }
    const int name = variant.indexOf(ParameterCell::Name);
    if (ParameterRules::faultOf(variant, ParameterCell::Name, cells.at(name))) {
        return {false, check.fault(name, cells)};
    }
    return {true, bad >= 0 && check.isChoice(bad) ? check.fault(bad, cells) : QString()};
}

} // namespace

QString ParameterClip::write(const QList<QStringList> &rows)
{
    QStringList lines;
    for (const QStringList &row : rows) {
        QStringList cells;
        for (const QString &text : row) {
            cells.append(cellText(text));
        }
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

RowImport ParameterClip::read(const QString &text, const ParameterVariant &variant)
{
    RowImport import;
    if (text.size() > mostText) {
        import.refusal = QT_TRANSLATE_NOOP("ParameterTable", "The clipboard holds too much to be pasted");
        return import;
    }
    if (text.isEmpty() || text.contains(QChar(QChar::Null))) {
        import.refusal = QT_TRANSLATE_NOOP("ParameterTable", "The clipboard holds no rows");
        return import;
    }
    const RowCheck check(variant);
    const int width = widthOf(variant);
    int number = 0; // of the row, from 1
    for (CellReader reader(text); !reader.atEnd();) {
        const QStringList cells = reader.takeRow();
        ++number;
        if (cells == QStringList(QString()) || (number == 1 && isHeader(check, cells, width))) {
            continue;
        }
        const Verdict verdict = verdictOn(cells, check, variant);
        if (!verdict.fault.isNull()) {
            check.add(&import.faults, place, number, cells, verdict.fault);
        }
        if (verdict.stays) {
            import.badChoices += verdict.fault.isNull() ? 0 : 1;
            import.rows.append(RowCheck::row(cells, width));
        }
    }
    return import;
}

#include "history/valuetable.h"

#include "log/csvcell.h"
#include "log/timetext.h"

#include <QIODevice>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

constexpr int pieceSize = 64 * 1024; // bytes

QByteArray numberCell(double number)
{
    // Powers of ten only where the digits end before the point, or begin far behind it.
    const double magnitude = std::abs(number);
    const bool isPlain = magnitude < 1e15 && (magnitude >= 1e-5 || magnitude == 0);
    return QByteArray::number(number, isPlain ? 'f' : 'e', QLocale::FloatingPointShortest);
}

QByteArray cellOf(const Sample &sample)
{
    switch (sample.state) {
    case SampleState::Valid:
        if (std::isnan(sample.number)) {
            return csvCell(sample.text);
        }
        return sample.text.isEmpty() ? numberCell(sample.number) : csvCell(sample.text.trimmed());
    case SampleState::NotValid:
        return "not valid";
    case SampleState::NoNumber:
        return "no number";
    case SampleState::NoReport:
        return "no report";
    case SampleState::Ended:
        return "ended";
    case SampleState::Dropped:
        return "dropped";
    }
    return {};
}

QByteArray headLine(const std::vector<ValueTable::Column> &columns)
{
    QByteArrayList cells{"Time"};
    for (const ValueTable::Column &column : columns) {
        cells.append(csvCell(fullName(column.id)));
    }
    return csvBegin + csvLine(cells);
}

// Merges columns by time. Of each it holds one sample.
class Lines
{
public:
    explicit Lines(std::vector<ValueTable::Column> columns)
        : m_columns(std::move(columns))
        , m_samples(m_columns.size())
    {
        for (size_t column = 0; column < m_columns.size(); ++column) {
            read(column);
        }
    }

    bool isAtEnd() const { return m_next.empty() || !m_error.isEmpty(); }
    QString error() const { return m_error; }

    QByteArray next()
    {
        QByteArrayList cells;
        cells.reserve(int(m_columns.size()) + 1);
        for (size_t cell = 0; cell <= m_columns.size(); ++cell) {
            cells.append(QByteArray());
        }
        const qint64 time = m_next.front().first;
        cells[0] = zonedTimeText(time).toLatin1();
        while (!m_next.empty() && m_next.front().first == time) {
            const size_t column = m_next.front().second;
            std::pop_heap(m_next.begin(), m_next.end(), std::greater<>());
            m_next.pop_back();
            cells[int(column) + 1] = cellOf(m_samples[column]);
            read(column);
        }
        return csvLine(cells);
    }

private:
    void read(size_t column)
    {
        SampleCursor &samples = *m_columns[column].samples;
        if (samples.next(&m_samples[column])) {
            m_next.emplace_back(m_samples[column].time, column);
            std::push_heap(m_next.begin(), m_next.end(), std::greater<>());
        } else if (m_error.isEmpty()) {
            m_error = samples.error();
        }
    }

    std::vector<ValueTable::Column> m_columns;
    std::vector<Sample> m_samples;
    std::vector<std::pair<qint64, size_t>> m_next; // a heap: time of the sample of each column that has one
    QString m_error;
};

} // namespace

bool ValueTable::write(QIODevice *device, std::vector<Column> columns, QString *error)
{
    QByteArray piece = headLine(columns);
    Lines lines(std::move(columns));
    while (!lines.isAtEnd()) {
        piece += lines.next();
        if (piece.size() >= pieceSize) {
            if (device->write(piece) != piece.size()) {
                return false;
            }
            piece.resize(0); // keeps its room
        }
    }
    if (error) {
        *error = lines.error();
    }
    return device->write(piece) == piece.size() && lines.error().isEmpty();
}

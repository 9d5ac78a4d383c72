#pragma once

#include "history/samplesource.h"
#include "history/thinning.h"

#include <cstring>
#include <memory>
#include <optional>
#include <vector>

// Samples of one point in the order of time, as many as its capacity at most. A valid number takes no more
// than itself and its time.
class Chunk
{
public:
    explicit Chunk(int capacity);
    // What it holds by now, and no room for more.
    std::shared_ptr<const Chunk> copy() const;

    int count() const { return m_count; }
    bool isFull() const { return m_count == m_capacity; }
    // What it takes in memory; texts count in each chunk that has them.
    qint64 bytes() const;

    // Whether all of them are valid numbers.
    bool isPlain() const { return !m_extras; }

    // A valid number, to a plain chunk.
    void append(const NumberAt &number) { m_numbers[size_t(m_count++)] = number; }
    void append(const NumberAt &number, SampleState state, const QString &text);
    void removeLast();

    qint64 firstTime() const { return m_numbers[0].time; }
    qint64 lastTime() const { return m_numbers[size_t(m_count - 1)].time; }
    SampleState lastState() const;
    QString lastText() const;
    // The index of the first sample not before the time; the count if there is none.
    int firstFrom(qint64 time) const;
    Sample at(int index) const;
    // What the thinning needs from that time on, the begin of its range.
    void feed(Thinning *thinning, qint64 from);
    // The samples behind the time.
    void feedAfter(Thinning *thinning, qint64 time) { feedFrom(thinning, firstFrom(time + 1)); }

private:
    struct Text { // from that sample up to the next text
        int index;
        QString text;
    };
    struct Extras {
        std::vector<SampleState> states;
        std::vector<Text> texts;
        qint64 textBytes = 0;
    };

    void feedFrom(Thinning *thinning, int index);

    std::unique_ptr<NumberAt[]> m_numbers;
    std::unique_ptr<Summary[]> m_summaries; // made when they are first needed; their room counts before
    std::unique_ptr<Extras> m_extras;       // null as long as all are valid numbers
    int m_count = 0;
    qint16 m_summarized = 0; // summaries that are made
    qint16 m_capacity;
};

// A point and its samples, in chunks that grow with their number. Functions that change what it takes in
// memory tell by how much, in bytes.
class Series
{
public:
    explicit Series(const QString &name)
        : m_name(name)
    {
    }

    const QString &name() const { return m_name; }
    bool isNamed(const QString &name) const { return isSame(m_name, name); }
    const QString &address() const { return m_address; }
    const QString &type() const { return m_type; }
    qint64 describe(const QString &address, const QString &type)
    {
        return isSame(m_address, address) && isSame(m_type, type) ? 0 : redescribe(address, type);
    }

    // The time must be past that of the last sample. Of a long text the beginning is kept, 1 kB.
    qint64 append(const NumberAt &number, SampleState state, const QString &text)
    {
        // NaN is not equal to itself.
        const bool isPlain = state == SampleState::Valid && number.number == number.number;
        if (isPlain && !m_chunks.empty() && m_chunks.back()->isPlain() && !m_chunks.back()->isFull()) {
            m_chunks.back()->append(number);
            ++m_count;
            return 0;
        }
        return appendOther(number, state, text);
    }
    qint64 appendBreak(qint64 time, SampleState state);
    // To be followed by an append.
    qint64 removeLast();
    // The oldest chunk.
    qint64 removeOldest();

    qint64 bytes() const;
    bool isEmpty() const { return m_chunks.empty(); }
    const std::vector<std::shared_ptr<Chunk>> &chunks() const { return m_chunks; }
    TimeRange extent() const;
    // Whether nothing is expected of it: its last sample says that no report came, or that the session ended.
    bool isSilent() const;
    void feed(Thinning *thinning, const TimeRange &range) const;
    // Goes on behind that time, up to the end of the range.
    void feedAfter(Thinning *thinning, qint64 time, qint64 end) const;
    // The last sample at the time or before it, and the first one after it.
    struct Around {
        std::optional<Sample> last;
        std::optional<Sample> next;
    };
    Around around(qint64 time) const;
    std::unique_ptr<SampleCursor> cursor(const TimeRange &range) const;

    quint32 report = 0; // number of the last report that had it
    bool isHeld = false;

private:
    // Short texts in the one loop that each row of each report goes through: worth more than a function of
    // QString.
    static bool isSame(const QString &left, const QString &right)
    {
        return left.size() == right.size()
            && std::memcmp(left.constData(), right.constData(), size_t(left.size()) * sizeof(QChar)) == 0;
    }

    qint64 redescribe(const QString &address, const QString &type);
    qint64 appendOther(const NumberAt &number, SampleState state, const QString &text);
    size_t chunkFrom(qint64 time) const;

    QString m_name;
    QString m_address;
    QString m_type;
    std::vector<std::shared_ptr<Chunk>> m_chunks; // none is empty; only the last one changes
    int m_count = 0;                              // of samples
};

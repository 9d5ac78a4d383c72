#include "history/series.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
constexpr int leastCapacity = 4; // samples of a chunk
constexpr int greatestCapacity = 512;
constexpr qint64 heapBytes = 16;       // of the allocator, a block
constexpr int textCharacters = 512;    // 1 kB
constexpr qint64 textHeaderBytes = 32; // of a QString's block

// Of long texts the beginning is kept.
QString cut(const QString &text)
{
    if (text.size() <= textCharacters) {
        return text;
    }
    int length = textCharacters - 1;
    if (text.at(length - 1).isHighSurrogate()) {
        --length;
    }
    return text.left(length) + QChar(0x2026);
}

qint64 bytesOf(const QString &text)
{
    return text.isEmpty() ? 0 : textHeaderBytes + qint64(sizeof(QChar)) * (text.size() + 1);
}

} // namespace

Chunk::Chunk(int capacity)
    : m_numbers(new NumberAt[size_t(capacity)])
    , m_summaries(capacity < Summary::length ? nullptr : new Summary[size_t(capacity / Summary::length)])
    , m_capacity(qint16(capacity))
{
}

std::shared_ptr<const Chunk> Chunk::copy() const
{
    auto copy = std::make_shared<Chunk>(m_count);
    std::copy_n(m_numbers.get(), m_count, copy->m_numbers.get());
    copy->m_count = m_count;
    if (m_extras) {
        copy->m_extras = std::make_unique<Extras>(*m_extras);
    }
    return copy;
}

qint64 Chunk::bytes() const
{
    qint64 bytes = qint64(sizeof(Chunk) + sizeof(NumberAt) * size_t(m_capacity)) + 3 * heapBytes;
    if (m_summaries) {
        bytes += qint64(sizeof(Summary)) * (m_capacity / Summary::length) + heapBytes;
    }
    if (m_extras) {
        bytes += qint64(sizeof(Extras) + m_extras->states.capacity() * sizeof(SampleState)
                        + m_extras->texts.capacity() * sizeof(Text))
            + 3 * heapBytes + m_extras->textBytes;
    }
    return bytes;
}

void Chunk::append(const NumberAt &number, SampleState state, const QString &text)
{
    if (isPlain()) {
        if (state == SampleState::Valid && !std::isnan(number.number)) {
            append(number);
            return;
        }
        m_extras = std::make_unique<Extras>();
        m_extras->states.reserve(size_t(m_capacity));
        m_extras->states.assign(size_t(m_count), SampleState::Valid);
    }
    m_numbers[size_t(m_count++)] = number;
    m_extras->states.push_back(state);
    std::vector<Text> &texts = m_extras->texts;
    const bool isSame = texts.empty() ? text.isEmpty() : texts.back().text == text;
    if (!isSame) {
        m_extras->textBytes += bytesOf(text);
        texts.push_back({m_count - 1, text});
    }
}

void Chunk::removeLast()
{
    --m_count;
    m_summarized = qint16(std::min(int(m_summarized), m_count / Summary::length));
    if (!m_extras) {
        return;
    }
    m_extras->states.pop_back();
    std::vector<Text> &texts = m_extras->texts;
    if (!texts.empty() && texts.back().index == m_count) {
        m_extras->textBytes -= bytesOf(texts.back().text);
        texts.pop_back();
    }
}

SampleState Chunk::lastState() const
{
    return m_extras ? m_extras->states.back() : SampleState::Valid;
}

QString Chunk::lastText() const
{
    return m_extras && !m_extras->texts.empty() ? m_extras->texts.back().text : QString();
}

int Chunk::firstFrom(qint64 time) const
{
    const NumberAt *const begin = m_numbers.get();
    return int(std::lower_bound(begin, begin + m_count, time,
                                [](const NumberAt &number, qint64 at) { return number.time < at; })
               - begin);
}

Sample Chunk::at(int index) const
{
    const NumberAt &number = m_numbers[size_t(index)];
    Sample sample{number.time, number.number, SampleState::Valid, {}};
    if (m_extras) {
        sample.state = m_extras->states[size_t(index)];
        const auto behind =
            std::upper_bound(m_extras->texts.begin(), m_extras->texts.end(), index,
                             [](int before, const Text &text) { return before < text.index; });
        if (behind != m_extras->texts.begin()) {
            sample.text = (behind - 1)->text;
        }
    }
    return sample;
}

void Chunk::feed(Thinning *thinning, qint64 from)
{
    feedFrom(thinning, isPlain() ? 0 : std::max(firstFrom(from) - 1, 0));
}

void Chunk::feedFrom(Thinning *thinning, int index)
{
    if (isPlain()) {
        for (; m_summarized < m_count / Summary::length; ++m_summarized) {
            const NumberAt *run = m_numbers.get() + qint64(m_summarized) * Summary::length;
            m_summaries[size_t(m_summarized)] = Summary::of(run);
        }
        // The first ones may lack the begin of their summary.
        constexpr int length = Summary::length;
        const int whole = std::min((index + length - 1) / length * length, m_count);
        thinning->add(m_numbers.get() + index, whole - index);
        thinning->add(m_numbers.get() + whole, m_count - whole, m_summaries.get() + whole / length);
        return;
    }
    for (; index < m_count; ++index) {
        if (!thinning->add(at(index))) {
            return;
        }
    }
}

namespace {

// Keeps the chunks that it walks over.
class ChunkCursor : public SampleCursor
{
public:
    ChunkCursor(std::vector<std::shared_ptr<const Chunk>> chunks, const TimeRange &range)
        : m_chunks(std::move(chunks))
        , m_range(range)
    {
    }

    bool next(Sample *sample) override
    {
        for (; m_chunk < m_chunks.size(); ++m_chunk, m_index = -1) {
            const Chunk &chunk = *m_chunks[m_chunk];
            m_index = m_index < 0 ? chunk.firstFrom(m_range.from) : m_index;
            if (m_index < chunk.count()) {
                *sample = chunk.at(m_index++);
                return sample->time <= m_range.to;
            }
        }
        return false;
    }

private:
    std::vector<std::shared_ptr<const Chunk>> m_chunks;
    TimeRange m_range;
    size_t m_chunk = 0;
    int m_index = -1; // of the next sample; -1 at the beginning of a chunk
};

} // namespace

qint64 Series::redescribe(const QString &address, const QString &type)
{
    const qint64 before = bytes();
    m_address = address;
    m_type = type;
    return bytes() - before;
}

qint64 Series::appendOther(const NumberAt &number, SampleState state, const QString &text)
{
    QString kept = cut(text);
    qint64 added = 0;
    if (m_chunks.empty() || m_chunks.back()->isFull()) {
        if (!m_chunks.empty() && m_chunks.back()->lastText() == kept) {
            kept = m_chunks.back()->lastText(); // shares it
        }
        m_chunks.push_back(std::make_shared<Chunk>(qBound(leastCapacity, m_count / 4, greatestCapacity)));
    } else {
        added = -m_chunks.back()->bytes();
    }
    m_chunks.back()->append(number, state, kept);
    ++m_count;
    return added + m_chunks.back()->bytes();
}

qint64 Series::appendBreak(qint64 time, SampleState state)
{
    return append({time, nothing}, state, QString());
}

qint64 Series::removeLast()
{
    const qint64 before = m_chunks.back()->bytes();
    m_chunks.back()->removeLast();
    --m_count;
    return m_chunks.back()->bytes() - before;
}

qint64 Series::removeOldest()
{
    const qint64 bytes = m_chunks.front()->bytes();
    m_count -= m_chunks.front()->count();
    m_chunks.erase(m_chunks.begin());
    return -bytes;
}

qint64 Series::bytes() const
{
    // Name, address and type, and the place in the list and the hash of the Standard.
    qint64 bytes =
        qint64(sizeof(Series)) + bytesOf(m_name) + bytesOf(m_address) + bytesOf(m_type) + 4 * heapBytes;
    for (const auto &chunk : m_chunks) {
        bytes += chunk->bytes();
    }
    return bytes;
}

TimeRange Series::extent() const
{
    return isEmpty() ? TimeRange{0, -1}
                     : TimeRange{m_chunks.front()->firstTime(), m_chunks.back()->lastTime()};
}

bool Series::isSilent() const
{
    return isEmpty() || !isReported(m_chunks.back()->lastState());
}

void Series::feed(Thinning *thinning, const TimeRange &range) const
{
    size_t chunk = chunkFrom(range.from);
    if (chunk > 0 && (chunk == m_chunks.size() || m_chunks[chunk]->firstTime() >= range.from)) {
        --chunk; // it ends with the sample before the range
    }
    for (; chunk < m_chunks.size(); ++chunk) {
        Chunk &each = *m_chunks[chunk];
        each.feed(thinning, range.from);
        if (each.lastTime() > range.to) {
            return;
        }
    }
}

void Series::feedAfter(Thinning *thinning, qint64 time, qint64 end) const
{
    for (size_t chunk = chunkFrom(time + 1); chunk < m_chunks.size(); ++chunk) {
        m_chunks[chunk]->feedAfter(thinning, time);
        if (m_chunks[chunk]->lastTime() > end) {
            return;
        }
    }
}

Series::Around Series::around(qint64 time) const
{
    Around around;
    const size_t chunk = chunkFrom(time + 1);
    const int index = chunk < m_chunks.size() ? m_chunks[chunk]->firstFrom(time + 1) : 0;
    if (chunk < m_chunks.size()) {
        around.next = m_chunks[chunk]->at(index);
    }
    if (index > 0) {
        around.last = m_chunks[chunk]->at(index - 1);
    } else if (chunk > 0) {
        around.last = m_chunks[chunk - 1]->at(m_chunks[chunk - 1]->count() - 1);
    }
    return around;
}

std::unique_ptr<SampleCursor> Series::cursor(const TimeRange &range) const
{
    std::vector<std::shared_ptr<const Chunk>> chunks;
    for (size_t chunk = chunkFrom(range.from); chunk < m_chunks.size(); ++chunk) {
        if (m_chunks[chunk]->firstTime() > range.to) {
            break;
        }
        const bool mayChange = chunk + 1 == m_chunks.size();
        chunks.push_back(mayChange ? m_chunks[chunk]->copy() : m_chunks[chunk]);
    }
    return std::make_unique<ChunkCursor>(std::move(chunks), range);
}

// The first chunk that ends at or behind the time.
size_t Series::chunkFrom(qint64 time) const
{
    return size_t(std::lower_bound(m_chunks.begin(), m_chunks.end(), time,
                                   [](const auto &chunk, qint64 at) { return chunk->lastTime() < at; })
                  - m_chunks.begin());
}

#include "boxsim/outbox.h"

#include "boxsim/options.h"

#include <QTcpSocket>

namespace {

constexpr char headerByte = 0x12;

} // namespace

Outbox::Outbox(QTcpSocket *socket, const BoxSimFaults *faults, quint32 noiseSeed, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_faults(faults)
    , m_noise(noiseSeed)
{
    for (QTimer *timer : {&m_joinTimer, &m_splitTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, &Outbox::drain);
    }
}

void Outbox::send(const QByteArray &frame, int delay)
{
    if (delay <= 0) {
        append(frame);
        return;
    }
    m_delayed += frame.size();
    QTimer::singleShot(delay, Qt::PreciseTimer, this, [this, frame] {
        m_delayed -= frame.size();
        append(frame);
    });
}

void Outbox::sendRaw(const QByteArray &bytes)
{
    m_socket->write(bytes);
    m_socket->flush();
}

qint64 Outbox::queued() const
{
    return m_delayed + m_waiting.size() - m_head + m_socket->bytesToWrite();
}

void Outbox::discard()
{
    m_exhausted = true;
    m_waiting.clear();
    m_head = 0;
}

void Outbox::append(const QByteArray &frame)
{
    if (m_exhausted || m_faults->silent || m_socket->state() != QAbstractSocket::ConnectedState) {
        return;
    }
    m_waiting += noise(m_faults->noise) + frame;
    if (m_faults->join > 0) {
        if (!m_joinTimer.isActive()) {
            m_joinTimer.start(m_faults->join);
        }
    } else if (!m_splitTimer.isActive()) {
        drain();
    }
}

void Outbox::drain()
{
    const int there = m_waiting.size() - m_head;
    if (there == 0 || m_socket->state() != QAbstractSocket::ConnectedState) {
        return;
    }
    const int size = m_faults->split > 0 ? qMin(m_faults->split, there) : there;
    const QByteArray piece = m_waiting.mid(m_head, size);
    m_head += size;
    if (m_head == m_waiting.size()) {
        m_waiting.clear();
        m_head = 0;
    } else {
        m_splitTimer.start(m_faults->splitGap);
    }
    write(piece);
}

void Outbox::write(const QByteArray &bytes)
{
    const int limit = m_faults->dropAfterSent;
    const QByteArray part = limit > 0 ? bytes.left(static_cast<int>(qMax<qint64>(0, limit - m_sent))) : bytes;
    m_socket->write(part);
    m_socket->flush();
    m_sent += part.size();
    if (limit > 0 && m_sent >= limit) {
        discard();
        emit exhausted();
    }
}

QByteArray Outbox::noise(int size)
{
    QByteArray bytes;
    while (bytes.size() < size) {
        m_noise = m_noise * 1664525U + 1013904223U;
        const char byte = static_cast<char>(m_noise >> 24);
        // Without its first byte no header can stand in the noise, nor across its end.
        bytes.append(byte == headerByte ? '\0' : byte);
    }
    return bytes;
}

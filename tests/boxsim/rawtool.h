#pragma once

#include "boxsim/faultlist.h"
#include "boxsim/options.h"
#include "handframes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTest>
#include <QVector>

// The tool's end of a connection in its barest form: writes what a test gives it, keeps what comes.
class RawTool
{
public:
    bool connectTo(const QHostAddress &address, quint16 port = 30088)
    {
        QObject::connect(&m_socket, &QTcpSocket::readyRead, &m_socket, [this] {
            m_pieces.append(m_socket.readAll());
            m_bytes += m_pieces.constLast();
        });
        m_socket.connectToHost(address, port);
        return QTest::qWaitFor([this] { return m_socket.state() == QAbstractSocket::ConnectedState; });
    }

    void send(const QByteArray &bytes)
    {
        m_socket.write(bytes);
        m_socket.flush();
    }

    // Waits until so many bytes have come, and takes them out; fewer if they do not come.
    QByteArray take(int size)
    {
        const bool came = QTest::qWaitFor([this, size] { return m_bytes.size() >= size; });
        const QByteArray taken = came ? m_bytes.left(size) : m_bytes;
        m_bytes.remove(0, taken.size());
        return taken;
    }

    // Waits for one frame by its length field and takes it out; empty if none comes.
    QByteArray takeFrame()
    {
        const auto length = [this] {
            return m_bytes.size() < 6
                ? 6
                : static_cast<quint8>(m_bytes.at(4)) + 256 * static_cast<quint8>(m_bytes.at(5));
        };
        const bool came = QTest::qWaitFor([this, length] { return m_bytes.size() >= qMax(6, length()); });
        return came ? take(length()) : QByteArray();
    }

    // The JSON object of the next frame, which must be of command 0x0500.
    QJsonObject takeJson()
    {
        const QByteArray frame = takeFrame();
        return frame.startsWith(QByteArray::fromHex("12340500"))
            ? QJsonDocument::fromJson(frame.mid(8, frame.size() - 10)).object()
            : QJsonObject();
    }

    bool waitForEnd()
    {
        return QTest::qWaitFor([this] { return m_socket.state() == QAbstractSocket::UnconnectedState; });
    }

    QTcpSocket &socket() { return m_socket; }
    QByteArray bytes() const { return m_bytes; }            // come and not taken
    QVector<QByteArray> pieces() const { return m_pieces; } // as they came, all of them

private:
    QTcpSocket m_socket;
    QByteArray m_bytes;
    QVector<QByteArray> m_pieces;
};

namespace Raw {

// A Box that reports only when it is asked to, with one fault or none.
inline BoxSimOptions quietBox(const QHostAddress &address, const QString &fault = QString())
{
    BoxSimOptions options;
    options.address = address;
    options.reportInterval = 0;
    if (!fault.isEmpty() && !applyFault(fault, &options.faults)) {
        qFatal("no such fault: %s", qPrintable(fault));
    }
    return options;
}

using HandFrames::heartbeat;
using HandFrames::hex;
using HandFrames::json;
using HandFrames::little;

// A chunk of a transfer; commandByte 3 is a project, 4 a program.
inline QByteArray chunk(char commandByte, int total, int number, const QByteArray &bytes)
{
    return HandFrames::frame(QByteArray(1, commandByte).toHex().append("00"),
                             hex("01") + little(quint32(total), 4) + little(quint32(bytes.size()), 2)
                                 + little(quint32(number), 4) + bytes);
}

inline QByteArray checksum(char commandByte, int total, const QByteArray &hexDigest)
{
    return HandFrames::frame(QByteArray(1, commandByte).toHex().append("00"),
                             hex("02") + little(quint32(total), 4) + hex("10")
                                 + QByteArray::fromHex(hexDigest));
}

// The whole of a transfer: chunks of 1024 bytes and the digest, given in hexadecimal.
inline QByteArray transfer(char commandByte, const QByteArray &file, const QByteArray &hexDigest)
{
    QByteArray bytes;
    for (int at = 0; at < file.size(); at += 1024) {
        bytes += chunk(commandByte, file.size(), at / 1024 + 1, file.mid(at, 1024));
    }
    return bytes + checksum(commandByte, file.size(), hexDigest);
}

// The JSON texts of the whole reports in a stream of segments, read by announced total and order.
inline QVector<QJsonObject> reports(const QByteArray &stream)
{
    QVector<QJsonObject> found;
    QByteArray text;
    for (int at = 0; at + 19 <= stream.size();) {
        const auto byte = [&stream, at](int offset) { return static_cast<quint8>(stream.at(at + offset)); };
        const int length = byte(4) + 256 * byte(5);
        if (byte(2) != 6 || at + length > stream.size()) {
            break;
        }
        text += stream.mid(at + 17, length - 19);
        if (text.size() >= byte(7) + 256 * byte(8) + 65536 * byte(9)) {
            found.append(QJsonDocument::fromJson(text).object());
            text.clear();
        }
        at += length;
    }
    return found;
}

} // namespace Raw

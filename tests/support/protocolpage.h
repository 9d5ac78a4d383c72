#pragma once

#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

// The bytes that docs/box-protocol.md shows, by the names of their blocks. Firmware is written from that
// page, so tests hold the program and the simulated Box against it.
class ProtocolPage
{
public:
    ProtocolPage()
    {
        QFile file(QString(SOURCE_ROOT "/docs/box-protocol.md"));
        if (!file.open(QIODevice::ReadOnly)) {
            m_wrong.append(file.errorString());
        }
        QString name;
        while (!file.atEnd()) {
            const QString line = QString::fromUtf8(file.readLine()).chopped(1);
            if (name.isEmpty()) {
                name = line.startsWith(QLatin1String("```hex ")) ? line.mid(7) : QString();
            } else if (line == QLatin1String("```")) {
                name.clear();
            } else {
                m_blocks[name] += bytesOf(line);
            }
        }
    }

    QStringList names() const { return m_blocks.keys(); }
    QByteArray bytes(const char *name) const { return m_blocks.value(QString::fromLatin1(name)); }
    // Lines of blocks that are no bytes; empty for a page in order.
    QStringList wrong() const { return m_wrong; }

private:
    // "61 62   told" is two bytes, "61 x 3" three; what follows three spaces is for reading only.
    QByteArray bytesOf(const QString &line)
    {
        static const QRegularExpression plain("^[0-9A-F]{2}(?: [0-9A-F]{2})*$");
        static const QRegularExpression repeated("^([0-9A-F]{2}) x ([0-9]+)$");
        const QString digits = line.section("   ", 0, 0);
        const QRegularExpressionMatch match = repeated.match(digits);
        if (match.hasMatch()) {
            return QByteArray::fromHex(match.captured(1).toLatin1()).repeated(match.captured(2).toInt());
        }
        if (!plain.match(digits).hasMatch()) {
            m_wrong.append(line);
        }
        return QByteArray::fromHex(digits.toLatin1());
    }

    QMap<QString, QByteArray> m_blocks;
    QStringList m_wrong;
};

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// What a serial line lacks, such as the parity that a Standard wants: it is used without, which is told once.
class SerialLacks
{
public:
    // tell takes a line for the log.
    SerialLacks(const QString &path, const std::function<void(const QString &)> &tell)
        : m_path(path)
        , m_tell(tell)
    {
    }

    void tell(const QString &what)
    {
        if (!m_told.contains(what)) {
            m_told.append(what);
            m_tell(QStringLiteral("%1 has no %2, and is used without").arg(m_path, what));
        }
    }

private:
    QString m_path;
    std::function<void(const QString &)> m_tell;
    QStringList m_told;
};

#pragma once

#include "boxctl/boxtask.h"

#include <QElapsedTimer>
#include <QMap>

// Reads a group of a Box's settings, changes the fields that are named, writes it and reads it back.
class SetTask : public SessionTask
{
    Q_OBJECT
public:
    struct Change {
        SettingsGroup group = SettingsGroup::Lan;
        QMap<int, QString> fields; // by their places, as the wire has them
        bool isNow = false;        // of the time: what it is when it is written
        bool isDryRun = false;     // says what would be written
        bool showSecrets = false;
    };

    SetTask(int timeout, Change change);

protected:
    void talk() override;

private:
    void write();
    void readBack();
    void compare(const BoxSettings &read);
    bool isAsWritten(int field, const QString &found) const;
    bool isClockAsWritten(const QString &found) const;
    QStringList lines() const;
    QString groupName() const;

    Change m_change;
    BoxSettings m_before;
    BoxSettings m_after;
    QElapsedTimer m_sinceWrite;
    qint64 m_askedBack = 0; // ms of that at which it was to be read back
};

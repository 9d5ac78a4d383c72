#pragma once

#include "boxlink/filetransfer.h"
#include "handframes.h"

#include <QFile>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

using namespace HandFrames;

// What the tests of a transfer share: a file to send, an owner of the connection, and the percentages that it
// was told. Each program has a Box address of its own.
class TransferTest
{
protected:
    explicit TransferTest(QString boxAddress)
        : m_boxAddress(std::move(boxAddress))
    {
    }

    void reset()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_owner = std::make_unique<QObject>();
        m_percentages.clear();
        m_timeouts = {};
    }

    // The path of a file with this content.
    QString write(const QByteArray &content)
    {
        QFile file(m_dir->filePath("file.bin"));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("no file to send");
        }
        return file.fileName();
    }

    FileTransfer::Job job(const QByteArray &content, Frame::Command command = Frame::ProjectTransfer)
    {
        FileTransfer::Job job;
        job.command = command;
        job.path = write(content);
        job.boxAddress = m_boxAddress;
        return job;
    }

    FileTransfer::Result transfer(const FileTransfer::Job &job)
    {
        FileTransfer transfer(
            job, m_owner.get(), [this](int percentage) { m_percentages.append(percentage); }, m_timeouts);
        return transfer.run();
    }

    // The "title|text|line" of a result, behind "ended: " where the wait for the verdict ended in time.
    static QString told(const FileTransfer::Result &result)
    {
        return (result.endedInTime ? QString("ended: ") : QString())
            + QStringList{result.messageTitle, result.messageText, result.line}.join(QLatin1Char('|'));
    }

    QString m_boxAddress;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<QObject> m_owner;
    QList<int> m_percentages;
    TransferTimeouts m_timeouts;
};

#pragma once

#include "boxsim/acquire/linesilence.h"
#include "boxsim/acquire/reading.h"

#include <QString>

#include <functional>
#include <memory>

class StopFlag;
struct SimStandard;

// What a reader works with. All of it outlives the reader.
struct ReaderSetup {
    const SimStandard *standard;
    QString serialPath;   // of the device file that stands for the Standard's COM; empty for a network
    bool grouping = true; // whether neighbouring addresses may be joined in one request
    StopFlag *stop;
    // A line for the log, told once each: which points can never be read, a parity that the line refuses. It
    // begins with the name of the Standard or the point. May be called from any thread.
    std::function<void(const QString &)> tell;
    // What the serial line needs, if only because of those that had it open before.
    std::shared_ptr<LineSilence> silence = std::make_shared<LineSilence>();
    // Whether the serial line may be opened by now. False with the reason.
    std::function<bool(QString *reason)> mayOpen = [](QString *) { return true; };
};

// Reads the devices of one Standard over its line: slaves or meters, numbered as in SimStandard::devices.
// It is built in one thread and from then on used in that of its link alone; there it blocks, but returns
// within a second from the time when the stop flag is set. All times are milliseconds.
class DeviceReader
{
public:
    enum class Outcome {
        Answered, // the device said something, if only that it refuses
        Silent,   // it said nothing that makes sense
        Absent,   // another one on the line said for it that it is silent
        Closed,   // the line was closed meanwhile, and is to be opened anew
        LineLost, // the line cannot be used
    };
    struct Result {
        Outcome outcome = Outcome::Answered;
        QString reason; // of an outcome that is not Answered, in words for the log: "no answer"
    };

    virtual ~DeviceReader() = default;

    // Whether the device has a point that can be read at all.
    virtual bool hasWork(int device) const = 0;
    // What the device is called in the log: "station 3".
    virtual QString deviceName(int device) const = 0;
    // What the line is called in the log: "192.168.1.60:502".
    virtual QString lineName() const = 0;
    // The longest that one attempt to open, and one request to a device that is silent, may take.
    virtual int openTimeout() const = 0;
    virtual int requestTimeout() const = 0;
    // The silence that the line needs after such a request, before anybody is asked again.
    virtual int quietTime() const { return 0; }
    // What a request takes at least until its answer can be here. A shorter time-out is of no use.
    virtual int leastTimeout() const = 0;

    // Opens the line with the Standard's settings. False, with the reason for the log, if that takes longer
    // than the time given or fails.
    virtual bool open(int timeout, QString *reason) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    // Waits for the silence that the line still needs. Otherwise the next request waits for it.
    virtual void settle() {}
    // Asks the device for its points. readings has one for each point of the device, in order, not valid when
    // it comes; what is read is put there. Ends with the first request that is silent for the time given, or
    // at which the line is closed; that one comes behind the others the next time. A reader may open the line
    // anew and ask once more before. The device has answered if it answered anything. A point that is
    // refused, or to which there never is an answer, is told once, and again only if it was read in between.
    virtual Result read(int device, int timeout, PointReading *readings) = 0;
    // The device was lost: what has been learned of it no longer counts.
    virtual void forget(int /*device*/) {}
};

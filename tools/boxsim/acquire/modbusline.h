#pragma once

#include "boxsim/acquire/modbusaddress.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <modbus.h>

class QDeadlineTimer;
class StopFlag;

// One request to one slave.
struct ModbusAsk {
    int station;
    ModbusArea area;
    int first;
    int count;
};

struct ModbusAnswer {
    enum class Kind {
        Data,
        Exception, // the slave refuses
        Silent,    // nothing came that makes sense
        Lost,      // the line failed
        Unusable,  // the line does not let a request be sent
    };
    Kind kind = Kind::Silent;
    int exception = 0; // the code
    QString reason;    // of all but data, in words for the log
};

// A connection or serial line to Modbus slaves, over libmodbus. It is used in one thread; it blocks, but ends
// soon after the stop flag is set. All times are milliseconds.
class ModbusLine
{
public:
    virtual ~ModbusLine();

    virtual QString name() const = 0;
    // The longest that opening may take.
    virtual int openTimeout() const = 0;
    int requestTimeout() const { return m_requestTimeout; }
    // The silence that follows a request without an answer.
    virtual int quietTime() const { return 0; }
    // What a request takes at least until its answer can be here.
    virtual int leastTimeout() const { return 20; }

    bool open(int timeout, QString *reason);
    virtual void close();
    // Waits for the silence that the line still needs.
    virtual void settle() {}
    bool isOpen() const { return m_context != nullptr; }
    // Reads registers, or bits as 0 and 1, into words. The time-out is that of the whole answer, on a serial
    // line without what the bytes of the answer need. Answers that are not to this request are left aside.
    ModbusAnswer read(const ModbusAsk &ask, int timeout, quint16 *words);

    // Whether a whole answer, of which so many bytes come before the function, is one to this request. True
    // with an exception as well.
    static bool fits(const ModbusAsk &ask, const QByteArray &answer, int header);

protected:
    struct Free {
        void operator()(modbus_t *context) const;
    };
    using Context = std::unique_ptr<modbus_t, Free>;
    enum class Failure {
        NoAnswer,
        OutOfStep, // where an answer begins in what comes is no longer known
    };

    ModbusLine(int requestTimeout, StopFlag *stop);

    // A context with an open line, null with the reason.
    virtual Context connect(int timeout, QString *reason) = 0;
    // Waits until a request may be sent, or opens the line anew, which may take no longer than the time
    // given. False with what is to be said instead of an answer.
    virtual bool prepare(int timeout, ModbusAnswer *answer) = 0;
    virtual bool send(const ModbusAsk &ask) = 0;
    // How many bytes more it is known to take until the answer is whole, 0 for one that is; below 0 if no
    // answer begins like this.
    virtual int missingBytes(const QByteArray &answer) const = 0;
    virtual bool isSound(const QByteArray &answer) const = 0;
    // What an answer with so many bytes of data needs on the line, in addition to the time-out.
    virtual int transferTime(int /*dataSize*/) const { return 0; }
    // Whether the answer belongs to the request that was sent last.
    virtual bool isLatest(const QByteArray &answer) const = 0;
    // The request that was sent last has no answer, if only because of a stop.
    virtual void noteFailure(Failure failure) = 0;

    modbus_t *context() const { return m_context.get(); }
    int socket() const;
    StopFlag *stopFlag() const { return m_stop; }
    // Waits for something to read or, while connecting, to write: 1 for something, 0 for the end of the time
    // or a stop, -1 for a line that hung up.
    int waitFor(int socket, short events, qint64 time) const;

private:
    enum class Coming { Whole, Nothing, Broken, Lost };

    ModbusAnswer receive(const ModbusAsk &ask, int timeout, quint16 *words);
    Coming collect(QDeadlineTimer *deadline, int *transfer, QByteArray *answer) const;
    bool take(const ModbusAsk &ask, const QByteArray &adu, quint16 *words, ModbusAnswer *answer) const;

    int m_requestTimeout;
    StopFlag *m_stop;
    Context m_context;
};

// The words for an exception code.
QString modbusExceptionText(int code);

#pragma once

#include "boxsim/acquire/modbusaddress.h"
#include "boxsim/acquire/modbusvalue.h"
#include "boxsim/simproject.h"

#include <QVector>

// A value that one slave is asked for.
struct ModbusItem {
    int point = 0; // of the slave
    ModbusAddress address;
    ModbusType type;
    int count = 1; // registers, or one bit

    int end() const { return address.number + count; }
};

// Neighbouring values of one area, asked for together.
struct ModbusRequest {
    QVector<ModbusItem> items; // by address
    int failures = 0;          // times running that it was not answered, though others were
    int answers = 0;           // times running that it was
    int part = 0;              // number of the request of which it is a part since silence, 0 if it is whole
    int trust = 10;            // answers of all parts after which they are joined again

    ModbusArea area() const { return items.constFirst().address.area; }
    int first() const { return items.constFirst().address.number; }
    int count() const;
};

// What one slave is asked for, and how: the rules for addresses, types and joined requests.
class ModbusPlan
{
public:
    struct Refusal {
        int point; // of the slave
        QString reason;
    };

    // The points are those of one slave, with its settings as the document has them.
    ModbusPlan(const QVector<SimPoint> &points, const QMap<QString, QString> &settings, bool grouping);

    const QVector<Refusal> &refusals() const { return m_refusals; }
    const QVector<ModbusRequest> &requests() const { return m_requests; }
    const ModbusOrder &order() const { return m_order; }
    // Asks for one value alone, by any number: another one for each, in turn.
    ModbusRequest single(int number) const { return {{m_items.at(number % m_items.size())}}; }

    enum class Split {
        Lasting,      // it was refused
        UntilAnswers, // it is not answered
    };
    // Halves a request. False if it has one value only.
    bool split(int request, Split split);
    // To be called before each reading. Joins again what was split because of silence if all of it has been
    // answered for long enough; if that was in vain, one failure splits it, and the next time takes twice as
    // long. Then sorts the requests, unless putFirst() said with which to begin: what was answered the last
    // time comes first, then what may be answered if it is split further, then single values that are silent.
    // As the first that is not answered ends a reading, only those behind it are not read.
    void beginReading();
    // A request was not answered: it comes behind the others of its kind.
    void putLast(int request);
    // A request had no turn, nor those behind it: the next reading begins with them.
    void putFirst(int request);
    // A request was answered.
    void noteAnswer(int request);
    // A request was not answered, though others were. True if that was so too often for a chance. One more
    // failure is so for each half of a split.
    bool noteFailure(int request);
    // Forgets what was split and moved.
    void reset();

private:
    void take(int index, const SimPoint &point, bool countsFrom0);
    void joinAnswered();
    void join(int part);

    bool m_grouping;
    ModbusOrder m_order;
    QVector<ModbusItem> m_items; // by area and address
    QVector<ModbusRequest> m_requests;
    int m_lastPart = 0;
    bool m_isInTurn = false; // whether putFirst() said with which to begin
    QVector<Refusal> m_refusals;
};

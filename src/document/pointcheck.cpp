#include "document/pointcheck.h"

#include "definitions/documentkeys.h"
#include "document/checkedobject.h"
#include "document/checktext.h"

#include <QMap>
#include <QStringList>

using namespace DocumentKeys;

namespace {

constexpr int mostTold = 5; // of rows or names in one remark

QString andMore(const QStringList &told, int all)
{
    const QString list = told.join(QLatin1String(", "));
    return all > told.size() ? CheckText::tr("%1 and %2 more").arg(list, QString::number(all - told.size()))
                             : list;
}

// Rows of a tab with one fault.
struct Rows {
    QVector<int> numbers; // from 1

    void add(int number) { numbers.append(number); }
    QString text() const
    {
        QStringList told;
        for (int i = 0; i < qMin(numbers.size(), mostTold); ++i) {
            told.append(QString::number(numbers.at(i)));
        }
        return andMore(told, numbers.size());
    }
};

using Severity = ProjectCheck::Severity;

void tell(CheckedObject *standard, const PointCheck::Tab &tab, Severity severity, const Rows &rows,
          const QString &fault)
{
    if (!rows.numbers.isEmpty()) {
        const QString text =
            rows.numbers.size() == 1 ? CheckText::tr("row %1: %2") : CheckText::tr("rows %1: %2");
        standard->add(severity, tab.place() + text.arg(rows.text(), fault));
    }
}

// What a list of the table offers.
struct ListColumn {
    QLatin1String key;
    QStringList choices;
};

const QVector<ListColumn> &listColumns()
{
    static const QVector<ListColumn> lists = [] {
        QVector<ListColumn> found;
        for (const Definitions::Column &column : modbusPointColumns) {
            if (column.choices) {
                found.append({column.key, Choices::list(column.choices)});
            }
        }
        return found;
    }();
    return lists;
}

// The faults of a tab's points, each with its rows.
class Faults
{
public:
    void addTexts(int row, const QJsonObject &point)
    {
        if (point.value(addrKey).toString().trimmed().isEmpty()) {
            m_withoutAddress.add(row);
        }
        if (point.value(nameKey).toString().isEmpty()) {
            m_withoutName.add(row);
        }
    }
    void addChoices(int row, const QJsonObject &point)
    {
        for (const ListColumn &list : listColumns()) {
            const QString chosen = point.value(list.key).toString();
            if (!list.choices.contains(chosen)) {
                m_wrong[list.key][chosen].add(row);
            }
        }
    }
    void tell(CheckedObject *standard, const PointCheck::Tab &tab, bool isMeter) const
    {
        // A meter's point has the address of its item, and no column of its own for it.
        const QString noAddress = isMeter ? CheckText::tr("The item is not one of this protocol version.")
                                          : CheckText::empty(CheckText::labelOf(addrKey));
        ::tell(standard, tab, Severity::Error, m_withoutAddress, noAddress);
        ::tell(standard, tab, Severity::Warning, m_withoutName,
               CheckText::empty(CheckText::labelOf(nameKey)));
        for (const ListColumn &list : listColumns()) {
            const QString label = CheckText::labelOf(list.key);
            const QMap<QString, Rows> wrong = m_wrong.value(list.key);
            for (auto value = wrong.begin(); value != wrong.end(); ++value) {
                ::tell(standard, tab, Severity::Error, *value,
                       value.key().isEmpty() ? CheckText::empty(label)
                                             : CheckText::notInList(label, value.key()));
            }
        }
    }

private:
    Rows m_withoutAddress;
    Rows m_withoutName;
    QHash<QString, QMap<QString, Rows>> m_wrong; // by key and value
};

} // namespace

QString PointCheck::Tab::address() const
{
    const QString station = group.value(QLatin1String("stationNum")).toString();
    return station.isEmpty() ? group.value(slaveAddressKey).toString() : station;
}

QString PointCheck::Tab::place() const
{
    const QString shown = CheckText::shortened(address());
    return shown.isEmpty() ? CheckText::tr("Tab %1: ").arg(number)
                           : CheckText::tr("Tab %1 (%2): ").arg(number).arg(shown);
}

void PointCheck::Names::add(const QString &name, int tab, int row)
{
    const auto first = m_first.constFind(name);
    if (first == m_first.constEnd()) {
        m_first.insert(name, {tab, row});
    } else if (++m_counts[name] == 1) {
        m_shared.append({name, *first, {tab, row}});
    }
}

void PointCheck::Names::tellShared(CheckedObject *standard) const
{
    if (m_shared.isEmpty()) {
        return;
    }
    QStringList told;
    const QVector<Shared> first = m_shared.mid(0, mostTold);
    for (const Shared &shared : first) {
        told.append(CheckText::tr("'%1' (tab %2 row %3, tab %4 row %5)")
                        .arg(CheckText::shortened(shared.name), QString::number(shared.first.tab),
                             QString::number(shared.first.row), QString::number(shared.second.tab),
                             QString::number(shared.second.row)));
    }
    standard->warning(CheckText::tr("Points of one name share a row of the Box's reports: %1.")
                          .arg(andMore(told, m_shared.size())));
}

void PointCheck::check(CheckedObject *standard, const Tab &tab, bool isMeter, Names *names)
{
    const QJsonValue datas = tab.group.value(datasKey);
    if (!datas.isArray() && !datas.isUndefined()) {
        standard->error(tab.place() + CheckText::noList(datasKey));
    }
    Faults faults;
    int row = 0;
    const QJsonArray points = datas.toArray();
    for (const QJsonValue &value : points) {
        const QJsonObject point = value.toObject();
        ++row;
        if (isMeter && point.value(selectKey).toString() != QLatin1String("true")) {
            continue;
        }
        faults.addTexts(row, point);
        if (!isMeter) {
            faults.addChoices(row, point);
        }
        const QString name = point.value(nameKey).toString();
        if (!name.isEmpty()) {
            names->add(name, tab.number, row);
        }
    }
    faults.tell(standard, tab, isMeter);
}

#include "document/pointcheck.h"

#include "definitions/documentkeys.h"
#include "document/checkedobject.h"

#include <QStringList>

using namespace DocumentKeys;
using CheckText::translated;

namespace {

constexpr int mostTold = 5; // of rows or names in one remark

QString andMore(const QStringList &told, int all)
{
    const QString list = told.join(QLatin1String(", "));
    return all > told.size() ? translated(QT_TRANSLATE_NOOP("ProjectCheck", "%1 and %2 more"))
                                   .arg(list, QString::number(all - told.size()))
                             : list;
}

// Rows of a tab with one fault.
struct Rows {
    QVector<int> numbers; // from 1
    QStringList values;   // what stands there; empty where nothing does

    void add(int number, const QString &value)
    {
        numbers.append(number);
        if (values.size() < mostTold) {
            values.append(CheckText::shortened(value));
        }
    }
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

void tell(CheckedObject *standard, const PointCheck::Tab &tab, Severity severity, const QString &key,
          const Rows &rows, bool isEmpty)
{
    if (rows.numbers.isEmpty()) {
        return;
    }
    const QString label = CheckText::labelOf(key);
    standard->add(
        severity,
        tab.place()
            + translated(QT_TRANSLATE_NOOP("ProjectCheck", "rows %1: %2"))
                  .arg(rows.text(),
                       isEmpty ? CheckText::empty(label) : CheckText::notInList(label, rows.values.first())));
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
            m_withoutAddress.add(row, QString());
        }
        if (point.value(nameKey).toString().isEmpty()) {
            m_withoutName.add(row, QString());
        }
    }
    void addChoices(int row, const QJsonObject &point)
    {
        for (const ListColumn &list : listColumns()) {
            const QString chosen = point.value(list.key).toString();
            if (!list.choices.contains(chosen)) {
                m_wrong[list.key].add(row, chosen);
            }
        }
    }
    void tell(CheckedObject *standard, const PointCheck::Tab &tab) const
    {
        ::tell(standard, tab, Severity::Error, addrKey, m_withoutAddress, true);
        ::tell(standard, tab, Severity::Warning, nameKey, m_withoutName, true);
        for (const ListColumn &list : listColumns()) {
            const Rows rows = m_wrong.value(list.key);
            ::tell(standard, tab, Severity::Error, list.key, rows, rows.values.value(0).isEmpty());
        }
    }

private:
    Rows m_withoutAddress;
    Rows m_withoutName;
    QHash<QString, Rows> m_wrong; // by key
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
    return shown.isEmpty()
        ? translated(QT_TRANSLATE_NOOP("ProjectCheck", "Tab %1: ")).arg(number)
        : translated(QT_TRANSLATE_NOOP("ProjectCheck", "Tab %1 (%2): ")).arg(number).arg(shown);
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
        told.append(translated(QT_TRANSLATE_NOOP("ProjectCheck", "'%1' (tab %2 row %3, tab %4 row %5)"))
                        .arg(CheckText::shortened(shared.name), QString::number(shared.first.tab),
                             QString::number(shared.first.row), QString::number(shared.second.tab),
                             QString::number(shared.second.row)));
    }
    standard->warning(
        translated(
            QT_TRANSLATE_NOOP("ProjectCheck", "Points of one name share a row of the Box's reports: %1."))
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
    faults.tell(standard, tab);
}

#pragma once

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QVector>

class CheckedObject;

// The check of the points of a Standard, tab by tab.
namespace PointCheck {

// A slave or a meter, with its points.
struct Tab {
    int number; // as the form counts, from 1
    QJsonObject group;

    // Station number or slave address.
    QString address() const;
    // "Tab 2 (7): ", which begins a remark.
    QString place() const;
};

// The names of a Standard's points, and which of them are given more than once.
class Names
{
public:
    void add(const QString &name, int tab, int row);
    // Adds one remark on all names that are given more than once.
    void tellShared(CheckedObject *standard) const;

private:
    struct Spot {
        int tab;
        int row;
    };
    struct Shared {
        QString name;
        Spot first;
        Spot second;
    };

    QHash<QString, Spot> m_first;
    QHash<QString, int> m_counts; // of names that were added more than once
    QVector<Shared> m_shared;     // in the order of the points
};

// Remarks on the points of the tab, one for each fault; the names are added to those of the Standard. Of a
// meter only the ticked points count.
void check(CheckedObject *standard, const Tab &tab, bool isMeter, Names *names);

} // namespace PointCheck

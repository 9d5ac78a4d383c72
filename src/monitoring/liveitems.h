#pragma once

#include <QTableWidgetItem>

// The name of a point, with itself as the tool tip. Sorts as text, or by a rank while its row has one.
class NameItem : public QTableWidgetItem
{
public:
    static constexpr int itemType = QTableWidgetItem::UserType;
    static constexpr qint64 noRank = -1;

    NameItem();

    // Rises from item to item, in the order in which they were made.
    qint64 arrival() const { return m_arrival; }
    void setRank(qint64 rank) { m_rank = rank; }

    QVariant data(int role) const override;
    bool operator<(const QTableWidgetItem &other) const override;

private:
    qint64 m_arrival;
    qint64 m_rank = noRank;
};

// A text that may be a number. Numbers sort by what they are worth, before all other texts.
class NumberItem : public QTableWidgetItem
{
public:
    static constexpr int itemType = QTableWidgetItem::UserType + 1;
    // What data() gives under this role: when the text has changed last, or -1.
    static constexpr int changedAtRole = Qt::UserRole + 1;
    static constexpr int isNumberRole = Qt::UserRole + 2;

    NumberItem();

    void setChangedAt(qint64 time) { m_changedAt = time; } // ms

    QVariant data(int role) const override;
    void setData(int role, const QVariant &value) override;
    bool operator<(const QTableWidgetItem &other) const override;

private:
    // Not a number for a text that is none.
    double number() const;

    mutable double m_number = 0;
    mutable bool m_isRead = false; // whether m_number is that of the text
    qint64 m_changedAt = -1;
};

#pragma once

#include "document/projectwriter.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardItemModel>
#include <QtTest>

// What the tests of the project document share.

// The bytes that this object has on disk.
inline QByteArray onDisk(const char *json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) {
        qFatal("not an object: %s", json);
    }
    return document.toJson();
}

// A project of one folder with one definition, and what the writer makes of that definition.
class Definition
{
public:
    Definition(const QString &folder, const QString &name)
    {
        m_model.appendRow(new QStandardItem("P"));
        QStandardItem *parent = new QStandardItem(folder);
        m_model.item(0)->appendRow(parent);
        m_item = new QStandardItem(name);
        parent->appendRow(m_item);
    }

    void set(int role, const QVariant &value) { m_item->setData(value, role); }
    void setProtocol(const char *protocol) { set(standardProtocolRole, QLatin1String(protocol)); }
    void setGroups(const GroupMap &groups) { set(standardDatasRole, QVariant::fromValue(groups)); }
    void setRows(const RowList &rows) { set(standardDatasRole, QVariant::fromValue(rows)); }

    QJsonObject object(const char *rootKey) const
    {
        return buildProjectJson(m_model.item(0)).value(QLatin1String(rootKey)).toArray().at(0).toObject();
    }
    QByteArray bytes(const char *rootKey) const { return QJsonDocument(object(rootKey)).toJson(); }

private:
    QStandardItemModel m_model;
    QStandardItem *m_item = nullptr;
};

class Standard : public Definition
{
public:
    explicit Standard(const char *protocol)
        : Definition("Standard", "M")
    {
        setProtocol(protocol);
        for (int role = standardCollectionIntervalRole; role <= standardRtuCommunicationTimeoutRole; ++role) {
            set(role, QString("v%1").arg(role - Qt::UserRole));
        }
    }
    QByteArray bytes() const { return Definition::bytes("standards"); }
    QJsonArray datas() const { return object("standards").value("datas").toArray(); }
    QByteArray part(const char *key) const
    {
        return QJsonDocument(object("standards").value(QLatin1String(key)).toObject()).toJson();
    }
};

inline QVariantList row(const QStringList &cells)
{
    QVariantList list;
    for (const QString &cell : cells) {
        list.append(cell);
    }
    return list;
}

inline RowList rows(const QList<QStringList> &lists)
{
    RowList list;
    for (const QStringList &cells : lists) {
        list.append(row(cells));
    }
    return list;
}

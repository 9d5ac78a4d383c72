#pragma once

#include "model/projecttree.h"

#include <QDataStream>
#include <QIcon>
#include <QMap>
#include <QStandardItemModel>
#include <QStringList>

// What a test compares of project items: whole items as printable lines.
namespace ProjectDump {

// An icon by its contents, so that icons of different files differ; empty for no icon.
inline QByteArray iconBytes(const QIcon &icon)
{
    QByteArray bytes;
    if (!icon.isNull()) {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << icon;
    }
    return bytes;
}

inline QByteArray iconBytes(const QString &path)
{
    return iconBytes(QIcon(path));
}

inline QString cells(const QVariantList &row)
{
    QStringList texts;
    for (const QVariant &cell : row) {
        texts.append(QLatin1String(cell.typeName()) + QLatin1Char(' ') + cell.toString());
    }
    return QLatin1Char('[') + texts.join(", ") + QLatin1Char(']');
}

inline QString rows(const RowList &list)
{
    QStringList texts;
    for (const QVariantList &row : list) {
        texts.append(cells(row));
    }
    return texts.join(QLatin1Char(' '));
}

inline QString valueText(const QVariant &value)
{
    if (value.userType() == qMetaTypeId<GroupMap>()) {
        const auto groups = value.value<GroupMap>();
        QStringList texts;
        for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
            texts.append(group.key() + ": " + rows(group.value()));
        }
        return "groups {" + texts.join("; ") + QLatin1Char('}');
    }
    if (value.userType() == qMetaTypeId<RowList>()) {
        return "rows " + rows(value.value<RowList>());
    }
    return QLatin1String(value.typeName()) + QLatin1Char(' ') + value.toString();
}

// Each role that was set, beside the text and the icon.
inline QMap<int, QVariant> values(const QStandardItem *item)
{
    QStandardItemModel model;
    model.appendRow(item->clone());
    QMap<int, QVariant> values = model.itemData(model.index(0, 0));
    for (auto value = values.begin(); value != values.end();) {
        value = value.key() < Qt::UserRole || !value.value().isValid() ? values.erase(value) : value + 1;
    }
    return values;
}

// One line each: "+<offset from Qt::UserRole> <type> <text>".
inline QStringList roles(const QStandardItem *item)
{
    QStringList lines;
    const QMap<int, QVariant> all = values(item);
    for (auto role = all.begin(); role != all.end(); ++role) {
        lines.append(QString("+%1 ").arg(role.key() - Qt::UserRole) + valueText(role.value()));
    }
    return lines;
}

// The item and all below it with texts and roles, children indented.
inline QStringList tree(const QStandardItem *item, const QString &indent = QString())
{
    QStringList lines{indent + item->text()};
    const QStringList own = roles(item);
    for (const QString &line : own) {
        lines.append(indent + "  " + line);
    }
    for (int row = 0; row < item->rowCount(); ++row) {
        lines += tree(item->child(row), indent + "    ");
    }
    return lines;
}

// The texts of the item and all below it, children in brackets: "P(Standard(M) Service() Box() Data())".
inline QString shape(const QStandardItem *item)
{
    QStringList children;
    for (int row = 0; row < item->rowCount(); ++row) {
        children.append(shape(item->child(row)));
    }
    return item->text() + QLatin1Char('(') + children.join(QLatin1Char(' ')) + QLatin1Char(')');
}

} // namespace ProjectDump

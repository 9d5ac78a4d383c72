#pragma once

#include "formtest.h"
#include "model/itemroles.h"

// What the tests of the forms of Standards share: the rows that a Standard has by tab.
class StandardFormTest : public FormTest
{
protected:
    StandardFormTest(QString name, QString protocol)
        : FormTest(std::move(name), standardProtocolRole, std::move(protocol))
    {
    }

    static void setGroups(QStandardItem *item, const GroupMap &groups)
    {
        item->setData(QVariant::fromValue(groups), standardDatasRole);
    }
    static GroupMap groupsOf(const QStandardItem *item)
    {
        return item->data(standardDatasRole).value<GroupMap>();
    }
};

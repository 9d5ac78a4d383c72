#pragma once

#include "document/projectwriter.h"
#include "model/workspace.h"

#include <QStringList>

// A main window for form tests: keeps the messages and hands out the item that the test chose.
class WorkspaceFake : public Workspace
{
public:
    void appendMessage(const QString &text) override { messages.append(text); }
    QStandardItem *currentItem() const override { return current; }
    QItemSelectionModel *selection() const override { return treeSelection; }
    QJsonObject buildProjectJson(QStandardItem *project) const override
    {
        return ::buildProjectJson(project);
    }
    void openImportDataDialog() override { ++imports; }

    QStringList messages;
    QStandardItem *current = nullptr;             // Not owned.
    QItemSelectionModel *treeSelection = nullptr; // Not owned.
    int imports = 0;                              // how often the point import was opened
};

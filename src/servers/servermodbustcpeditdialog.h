#pragma once

#include "servers/pointform.h"

class QStandardItemModel;
class QTabWidget;

// The form of a Server of protocol "ModbusTCP(Slave)": two register maps, "Holding Register" and "Input
// Register", on which points of the project are laid out. Each map is a table of its own; addresses and
// lengths count registers.
class ServerModbusTCPEditDialog : public PointForm
{
    Q_OBJECT
public:
    // The item is not owned; a null workspace takes no messages and imports nothing.
    ServerModbusTCPEditDialog(QStandardItem *item, Workspace *workspace);

signals:
    // The points were handed to the map that is shown.
    void dataImported(const QList<QJsonObject> &points, const QString &currentPLC);

public slots:
    // Builds the two maps, once.
    void setupUI();
    // Shows the item's rows in both maps, in place of those that are there.
    void populateData(QStandardItem *item);
    // Writes the rows of both maps into the item, and nothing else.
    void saveData();
    // What "Cancel" does.
    void closeDialog();
    // The address of each new point is the sum of the lengths above it.
    void handleImportedData(const QList<QJsonObject> &points, const QString &currentPLC) override;
    // Answers to a change of an address in one of the maps: one that conflicts is told and emptied.
    void handleDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    // Whether the row's registers overlap those of another row of the same map.
    bool checkAddressConflict(QStandardItemModel *model, int row) const; // clazy:exclude=const-signal-or-slot

protected:
    QTableView *pointView() const override;
    QStringList leadingCells(const QJsonObject &point, const QString &currentPLC) const override;
    void appendPoint(const QStringList &leading, const QJsonObject &point) override;
    void removePoint(QAbstractItemModel *model, int row) override;

private:
    void addFields();
    void addMap(const QString &title, const QString &name);
    void saveMaps(QStandardItem *item) const;
    void clearMaps();

    CustomPart m_shownFields;
    CustomPart m_registers;
    QTabWidget *m_tabs = nullptr;
    QVector<QStandardItemModel *> m_maps; // children of the form, in the order of the tabs
    bool m_conflictReported = false;
};

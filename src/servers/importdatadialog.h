#pragma once

#include <QDialog>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QPersistentModelIndex>

class QModelIndex;
class QStandardItemModel;
class QTableView;
class QTreeView;

// Picks points of a project for a Server: its definitions as a tree, and the points of the definition that is
// current there as a table. It shows copies, so that what happens to the project leaves it as it is.
class ImportDataDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ImportDataDialog(QWidget *parent = nullptr);
    ~ImportDataDialog() override;

    // Both are kept and not shown.
    void setProjectName(const QString &name) { m_projectName = name; }
    void setProjectDescription(const QString &description) { m_projectDescription = description; }
    QString projectName() const { return m_projectName; }
    QString projectDescription() const { return m_projectDescription; }

    // The points that the table shows for a definition of this name; an earlier list of the name is replaced.
    void addPoints(const QString &definition, const QList<QJsonObject> &points);
    // Shows the first project of this name with the PLCs and those Standards that declare points; nothing if
    // there is no such project.
    void buildTree(const QStandardItemModel &projects, const QString &name);

signals:
    // Name, address, data type and length of each selected row, in the order of selection, and the name of
    // the definition that they are of.
    void dataSelected(const QList<QJsonObject> &data, const QString &currentPLC);

public slots:
    // Fills the table with the points of this node; a project or folder has none. Nothing is selected then.
    void onTreeViewClicked(const QModelIndex &index);
    // Hands the selection over, an empty one too, clears it and stays open.
    void onOkButtonClicked();

private:
    void showPoints(const QList<QJsonObject> &points);

    QString m_projectName;
    QString m_projectDescription;
    QMap<QString, QList<QJsonObject>> m_points;
    QPersistentModelIndex m_shown; // the node whose points the table shows
    QStandardItemModel *m_model;   // of the table
    QTreeView *m_tree;
    QTableView *m_table;
};

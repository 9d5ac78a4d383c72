#pragma once

#include <QDialog>
#include <QJsonObject>
#include <QList>
#include <QPointer>
#include <QString>

class ImportDataDialog;
class QTreeView;

// Brings points of the project's definitions into the table of a Server.
class PointImport : public QObject
{
    Q_OBJECT
public:
    // The window owns this and the dialogs; the tree may die first.
    PointImport(QTreeView *tree, QWidget *window);

    // Shows a dialog with the points of the current project, beside those that are open already, and returns
    // it. It is freed when it closes. Without a current item nothing shows, null is returned, and the dialog
    // that was made lives as long as the window.
    ImportDataDialog *open();

    // The form that gets the points; null for none, and once it is gone.
    QDialog *receiver() const;
    // Makes a new form the receiver if it is of a Server that points can be picked for.
    void considerForm(QDialog *form);

    // Hands the points and the name of their definition to the receiver. One that takes none, or null, drops
    // them in silence.
    void deliver(const QList<QJsonObject> &points, const QString &currentPLC);

private:
    QPointer<QTreeView> m_tree;
    QWidget *m_window;
    QPointer<QDialog> m_receiver;
};

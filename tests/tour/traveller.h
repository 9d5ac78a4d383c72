#pragma once

#include "mainwindow/cmainwindow.h"
#include "messages.h"
#include "modaldialogs.h"

#include <QObject>

class QDialog;
class QStandardItem;
class QTableWidget;
class TrendWindow;
class standardModbusEditDialog;

// A user at the real window: goes by clicks and keys only, and takes pictures on the way.
class Traveller : public QObject
{
    Q_OBJECT
public:
    // Pictures go to the folder that TOUR_DIR names, else to "tour" in the working directory.
    explicit Traveller(CMainWindow *window);

    Messages &messages() { return m_messages; }
    ModalDialogs &dialogs() { return m_dialogs; }

    // Saves what the window shows, with the dialog over it if one is given.
    void picture(const QString &name, QWidget *dialog = nullptr);

    // Scrolls the form until the widget's top is so many pixels below the top of what is shown; a negative
    // number hides so much of the widget.
    void scrollTo(QWidget *widget, int below);
    // Drags the edge between the live values and the form of a Box.
    void widenLiveValues();

    // The node that the texts lead to, such as "plant/Box/gate"; null if there is none.
    QStandardItem *node(const QString &path) const;
    void click(const QString &path);
    // Asks for the node's context menu and takes the entry with this text, already translated; the step, if
    // any, drives the dialog that the entry opens.
    void choose(const QString &path, const QString &entry, const ModalDialogs::Step &dialog = {});
    void trigger(const char *action);

    // The form in the open edit tab, of the type.
    template <class Form> Form *form() const { return m_window->findChild<Form *>(); }
    // Keys into the named field of the dialog or form, in place of what it holds.
    void type(const QWidget *form, const char *field, const QString &text);
    void press(const QWidget *form, const char *button);
    // Answers the next file dialog with this path.
    void giveFile(const QString &path);

    // Adds points to the slave in front: each an address, a name and a type.
    void addPoints(const standardModbusEditDialog *form, const QVector<QStringList> &points);

    QStringList dockLines() const;
    // Of the live page with this title; null if there is none.
    QTableWidget *liveTable(const QString &title) const;
    // The trend of all rows of the live page in front, over half a minute; null if none opens.
    TrendWindow *openTrend();
    // The trend of all points of a recording; null if none opens.
    TrendWindow *openRecording(const QString &path);

private:
    QPoint centreOf(const QStandardItem *item) const;

    CMainWindow *m_window; // Not owned.
    QString m_folder;
    Messages m_messages;
    ModalDialogs m_dialogs;
};

#pragma once

#include "logtail.h"
#include "messages.h"
#include "modaldialogs.h"
#include "model/projecttree.h"
#include "workspacefake.h"

#include <QObject>
#include <QStandardItemModel>
#include <QWidget>
#include <QtTest>

// What the tests of the forms of Standards share: a Standard, a main window, watch over each message box and
// dialog, and ways to look at a form.
class StandardFormTest : public QObject
{
    Q_OBJECT
protected:
    // The Standard that each test begins with.
    StandardFormTest(QString name, QString protocol);

    template <class Widget> static Widget *find(const QWidget &form, const char *name)
    {
        return form.findChild<Widget *>(QLatin1String(name));
    }
    static void show(QWidget &form);
    // Of the tabs, in order.
    static QStringList titles(const QWidget &form);
    // Of all inputs that are no cells, sorted.
    static QStringList inputNames(const QWidget &form);
    static void setGroups(QStandardItem *item, const GroupMap &groups);
    static GroupMap groupsOf(const QStandardItem *item);
    // Turns the wheel by one notch over the widget.
    static void turnWheel(QWidget *widget);

    // Saves a form whose node has left the tree: nothing happens.
    template <class Form> void saveWithoutItsNode() const
    {
        QStandardItemModel model;
        model.appendRow(new QStandardItem("gone"));
        Form form(model.item(0), m_workspace);
        model.removeRow(0);
        form.saveChanges();
        QCoreApplication::processEvents();
        QCOMPARE(m_workspace->messages, QStringList());
    }
    // The lines of a form that is opened, given another item, saved and closed.
    template <class Form> QStringList linesOfALife() const
    {
        const LogTail log(QString::fromLatin1(Form::staticMetaObject.className()));
        QStandardItem other("Other");
        {
            Form form(m_item, m_workspace);
            form.replaceItem(&other);
            form.saveChanges();
        }
        return log.events();
    }

    QStandardItem *m_item = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
    ModalDialogs *m_dialogs = nullptr;

protected slots:
    void init();
    void cleanup();

private:
    QString m_name;
    QString m_protocol;
};

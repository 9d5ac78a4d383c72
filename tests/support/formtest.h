#pragma once

#include "messages.h"
#include "modaldialogs.h"
#include "model/projecttree.h"
#include "run.h"
#include "workspacefake.h"

#include <QAbstractItemModelTester>
#include <QMap>
#include <QStandardItemModel>
#include <QVariant>
#include <QWidget>
#include <QtTest>

#include <memory>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QTableView;

// What the tests of forms share: a definition in a tree, a main window that notes what it is told, and ways
// to look at a form as a user does. What a test expects to be told and is not fails it, and so does a table
// of a form whose model breaks the rules of models.
class FormTest : public QObject
{
    Q_OBJECT
public:
    template <class Widget> static Widget *find(const QWidget &form, const QByteArray &name)
    {
        return form.findChild<Widget *>(QString::fromLatin1(name));
    }
    static QLineEdit *edit(const QWidget &form, const QByteArray &name);
    static QComboBox *list(const QWidget &form, const QByteArray &name);
    static QCheckBox *check(const QWidget &form, const QByteArray &name);
    static void click(const QWidget &form, const QByteArray &button);
    // Types into the emptied input, letter by letter, whatever the keyboard has.
    static void typeInto(QLineEdit *edit, const QString &text);
    // By one notch towards the user, over the widget, as the window system tells it.
    static void turnWheel(QWidget *widget);
    static void show(QWidget &form);

    // What the line edits and lists of these names show.
    static QStringList textsOf(const QWidget &form, std::initializer_list<const char *> names);
    static QStringList entriesOf(const QComboBox *list);
    static QStringList headersOf(const QTableView *view);
    static QStringList tabsOf(const QWidget &form);
    // "label|name" of each labelled input, in the order of the form.
    static QStringList labelsOf(const QWidget &form);
    // The names of all inputs that are no cells, sorted.
    static QStringList inputsOf(const QWidget &form);

    // Each role that was set, beside the name and the icon.
    static QMap<int, QVariant> rolesOf(const QStandardItem &item);
    static RowList rowsOf(const QStandardItem &item, int role);
    static void setRows(QStandardItem *item, int role, const RowList &rows);

protected:
    // The definition that each test begins with; its protocol stands in the role of its kind.
    FormTest(QString name, int protocolRole, QString protocol);
    ~FormTest() override;

    // Writes into a fresh item what tells its kind.
    virtual void prepare(QStandardItem *item) const;
    // One more definition of the same kind.
    QStandardItem *addItem(const QString &name);
    void removeItems();

    // From init() to cleanup(). Checking a model of many rows at each change takes minutes.
    void setModelsChecked(bool checked) { m_checksModels = checked; }

    bool eventFilter(QObject *watched, QEvent *event) override;

    QStandardItem *m_item = nullptr; // in row 0 of the tree
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
    ModalDialogs *m_dialogs = nullptr;

protected slots:
    virtual void init();
    virtual void cleanup();

private:
    struct Surroundings {
        QStandardItemModel tree;
        WorkspaceFake workspace;
        Messages messages;
        ModalDialogs dialogs;
    };

    QString m_name;
    int m_protocolRole;
    QString m_protocol;
    std::unique_ptr<Surroundings> m_surroundings;
    bool m_checksModels = true;
};

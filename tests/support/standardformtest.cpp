#include "standardformtest.h"

#include "model/itemroles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QStandardItem>
#include <QTabWidget>
#include <QTableWidget>
#include <QtTest>

StandardFormTest::StandardFormTest(QString name, QString protocol)
    : m_name(std::move(name))
    , m_protocol(std::move(protocol))
{
}

void StandardFormTest::init()
{
    m_item = new QStandardItem(m_name);
    m_item->setData(m_protocol, standardProtocolRole);
    m_workspace = new WorkspaceFake;
    m_messages = new Messages;
    m_dialogs = new ModalDialogs;
}

void StandardFormTest::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    QCOMPARE(m_dialogs->pending(), 0);
    delete m_dialogs;
    delete m_messages;
    delete m_workspace;
    delete m_item;
}

void StandardFormTest::show(QWidget &form)
{
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
}

QStringList StandardFormTest::titles(const QWidget &form)
{
    QStringList texts;
    const auto *tabs = form.findChild<QTabWidget *>();
    for (int index = 0; index < tabs->count(); ++index) {
        texts.append(tabs->tabText(index));
    }
    return texts;
}

QStringList StandardFormTest::inputNames(const QWidget &form)
{
    QStringList names;
    const auto widgets = form.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const bool cell = qobject_cast<const QTableWidget *>(widget->parentWidget()->parentWidget());
        if (!cell
            && (qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget)
                || qobject_cast<const QCheckBox *>(widget))) {
            names.append(widget->objectName());
        }
    }
    names.sort();
    return names;
}

void StandardFormTest::setGroups(QStandardItem *item, const GroupMap &groups)
{
    item->setData(QVariant::fromValue(groups), standardDatasRole);
}

GroupMap StandardFormTest::groupsOf(const QStandardItem *item)
{
    return item->data(standardDatasRole).value<GroupMap>();
}

void StandardFormTest::turnWheel(QWidget *widget)
{
    QWheelEvent wheel(QPointF(1, 1), QPointF(1, 1), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &wheel);
}

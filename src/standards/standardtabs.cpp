#include "standards/standardtabs.h"

#include "forms/formpage.h"
#include "standards/standardpage.h"
#include "widgets/iconground.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTableWidget>

StandardTabs::StandardTabs(QString newTitle, QString loadedTitle, MakePage makePage, QWidget *parent)
    : TabWidget(parent)
    , m_newTitle(std::move(newTitle))
    , m_loadedTitle(std::move(loadedTitle))
    , m_makePage(std::move(makePage))
{
    setTabsClosable(true);
    if (isDark(palette())) { // the platform's cross is black
        tabBar()->setStyleSheet(
            QStringLiteral("QTabBar::close-button { image: url(:/adsdemo/images/close-light.svg); }"));
    }
    // The close buttons are out of the keyboard's reach. Two keys, since what is closed is gone.
    auto *close =
        new QShortcut(QKeySequence(QStringLiteral("Ctrl+W")), tabBar(), nullptr, nullptr, Qt::WidgetShortcut);
    connect(close, &QShortcut::activated, this, [this] {
        if (count() > 0) {
            emit tabCloseRequested(currentIndex());
        }
    });
}

QPushButton *StandardTabs::makeAddButton(const QString &text, QWidget *parent)
{
    QPushButton *add = FormPage::button(text, QStringLiteral(":/adsdemo/images/add.svg"), parent);
    add->setObjectName(QStringLiteral("addTabButton"));
    return add;
}

StandardPage *StandardTabs::addPage()
{
    return appendPage(m_newTitle.arg(m_next++));
}

StandardPage *StandardTabs::appendPage(const QString &title)
{
    StandardPage *page = m_makePage();
    addTab(page, title);
    FormPage::orderBehind(this, page);
    return page;
}

StandardPage *StandardTabs::pageTitled(const QString &title)
{
    for (int index = 0; index < count(); ++index) {
        auto *page = qobject_cast<StandardPage *>(widget(index));
        if (page && tabText(index) == title) {
            return page;
        }
    }
    return appendPage(title);
}

void StandardTabs::duplicatePage(int index)
{
    const auto *page = qobject_cast<StandardPage *>(widget(index));
    const RowList rows = page ? page->rows() : RowList();
    if (rows.isEmpty()) {
        return;
    }
    StandardPage *copy = addPage();
    copy->setRows(rows);
    setCurrentWidget(copy);
    copy->addressInput()->setFocus();
    copy->addressInput()->selectAll();
}

void StandardTabs::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint place =
        byKey ? tabBar()->tabRect(currentIndex()).center() : tabBar()->mapFromGlobal(event->globalPos());
    const QPointer<QWidget> page = widget(tabBar()->tabAt(place));
    if (!page || (byKey && !tabBar()->hasFocus())) {
        event->ignore(); // it came from a page
        return;
    }
    QMenu menu; // without a parent: the form may die below it
    const QAction *duplicate = menu.addAction(tr("Duplicate"));
    if (menu.exec(tabBar()->mapToGlobal(place)) == duplicate && page) {
        emit duplicateRequested(indexOf(page));
    }
}

void StandardTabs::deletePage(int index)
{
    // At once: numbers and contents of the tabs must agree when the next event comes.
    delete widget(index);
    retitle(m_newTitle);
}

void StandardTabs::deletePages()
{
    while (count() > 0) {
        deletePage(0);
    }
}

int StandardTabs::rowsIn(const QVariant &stored)
{
    int rows = 0;
    const auto groups = stored.value<GroupMap>();
    for (const RowList &group : groups) {
        rows += group.mid(1).size();
    }
    return rows;
}

void StandardTabs::load(const QVariant &stored,
                        const std::function<void(const QString &, const RowList &)> &loadTab)
{
    const auto groups = stored.value<GroupMap>();
    for (auto group = groups.constBegin(); group != groups.constEnd(); ++group) {
        loadTab(group.key(), group.value());
    }
    retitle(m_loadedTitle);
    const auto tables = findChildren<QTableWidget *>();
    for (QTableWidget *table : tables) {
        table->setFixedHeight(tableHeight);
    }
}

GroupMap StandardTabs::groups() const
{
    GroupMap groups;
    for (int index = 0; index < count(); ++index) {
        const auto *page = qobject_cast<StandardPage *>(widget(index));
        const RowList rows = page ? page->rows() : RowList();
        if (!rows.isEmpty()) {
            groups.insert(tabText(index), rows);
        }
    }
    return groups;
}

void StandardTabs::retitle(const QString &pattern)
{
    for (int index = 0; index < count(); ++index) {
        setTabText(index, pattern.arg(index + 1));
    }
    m_next = count() + 1;
}

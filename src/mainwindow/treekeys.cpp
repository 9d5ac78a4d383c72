#include "mainwindow/treekeys.h"

#include "mainwindow/editortabs.h"
#include "mainwindow/projecttreemenu.h"

#include <QLineEdit>
#include <QShortcut>
#include <QTreeView>

TreeKeys::TreeKeys(QTreeView *tree, ProjectTreeMenu *menu, const EditorTabs *tabs)
    : QObject(tree)
    , m_tree(tree)
    , m_menu(menu)
{
    connect(tabs, &EditorTabs::shown, this, [this](ads::CDockWidget *tab) { m_shown = tab; });
    const struct {
        Qt::Key key;
        void (TreeKeys::*command)();
    } keys[] = {
        {Qt::Key_Return, &TreeKeys::open},
        {Qt::Key_Enter, &TreeKeys::open},
        {Qt::Key_F2, &TreeKeys::rename},
    };
    for (const auto &row : keys) {
        auto *key = new QShortcut(row.key, tree, nullptr, nullptr, Qt::WidgetShortcut);
        key->setAutoRepeat(false);
        connect(key, &QShortcut::activated, this, row.command);
    }
}

void TreeKeys::open()
{
    m_menu->click(m_tree->currentIndex());
}

void TreeKeys::rename()
{
    m_shown.clear();
    m_menu->openForm(m_tree->currentIndex());
    const QWidget *form = m_shown ? m_shown->widget() : nullptr;
    auto *name = form ? form->findChild<QLineEdit *>(QStringLiteral("name")) : nullptr;
    if (name) {
        name->activateWindow(); // the tab may be in a window of its own
        name->setFocus(Qt::ShortcutFocusReason);
        name->selectAll();
    }
}

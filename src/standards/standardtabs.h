#pragma once

#include "model/projecttree.h"

#include "widgets/tabwidget.h"

#include <functional>

class QPushButton;
class StandardPage;

// The tabs of a Standard, one for each device on its link: closable, and numbered from 1 in their titles. The
// stored rows are a list for each title. Ctrl+W on the tab bar stands for the current tab's close button, the
// menu key for a right click on it.
class StandardTabs : public TabWidget
{
    Q_OBJECT
public:
    static constexpr int tableHeight = 600; // of the table on a page, pixels
    // Makes an empty page of the form, a child of the tabs.
    using MakePage = std::function<StandardPage *()>;

    // Titles with %1 for the number: of a new tab and of all tabs when one was closed, and of loaded tabs.
    StandardTabs(QString newTitle, QString loadedTitle, MakePage makePage, QWidget *parent);

    // The button that adds a tab, not connected; the text is already translated.
    static QPushButton *makeAddButton(const QString &text, QWidget *parent);

    // Appends an empty page with the next number; it does not become the current one.
    StandardPage *addPage();
    // The first page with that title, which is appended if there is none.
    StandardPage *pageTitled(const QString &title);
    // Appends what the page shows as a page of its own and makes it the current one, its address selected for
    // being typed anew.
    void duplicatePage(int index);
    // At once and without asking; the numbers of the others close up.
    void deletePage(int index);
    void deletePages();

    // How many rows of tables there are in a stored map, of which each entry begins with the tab's own
    // settings.
    static int rowsIn(const QVariant &stored);
    // Hands each entry of the stored map to the form, in the order of titles as texts, and numbers the tabs.
    void load(const QVariant &stored, const std::function<void(const QString &, const RowList &)> &loadTab);
    // The map to be stored; a page that gives no rows is left out.
    GroupMap groups() const;

signals:
    // "Duplicate" was chosen in the context menu of a tab.
    void duplicateRequested(int index);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    StandardPage *appendPage(const QString &title);
    void retitle(const QString &pattern);

    QString m_newTitle;
    QString m_loadedTitle;
    MakePage m_makePage;
    int m_next = 1; // number of the next new tab
};

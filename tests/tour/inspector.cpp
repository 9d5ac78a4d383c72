#include "inspector.h"

#include "seen.h"
#include "textspots.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextLayout>
#include <QTreeView>
#include <QtTest>

#include <algorithm>

namespace {

constexpr double leastContrast = 4.5; // WCAG 2, level AA
constexpr double leastIconContrast = 3;
constexpr int leastLineEdit = 15; // characters: an address
constexpr int mostSteps = 300;    // of the Tab key through one form

QString nameOf(const QWidget *widget)
{
    QString name = QLatin1String(widget->metaObject()->className());
    if (!widget->objectName().isEmpty()) {
        name += QLatin1Char(' ') + widget->objectName();
    }
    return name;
}

QString nameOf(const TextSpot &spot)
{
    return nameOf(spot.widget) + " \"" + spot.text.left(40) + QLatin1Char('"');
}

QWidgetList shownWidgets(const QWidget *form)
{
    QWidgetList shown;
    const auto widgets = form->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (widget->isVisible() && widget->window() == form) {
            shown.append(widget);
        }
    }
    return shown;
}

// The cells of a table have rules of their own: its columns name them, and their widths are the user's.
bool isCell(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    const auto *view = parent ? qobject_cast<const QAbstractItemView *>(parent->parentWidget()) : nullptr;
    return view && view->viewport() == parent;
}

// Where something is to be typed, chosen or pressed.
bool isInput(const QWidget *widget)
{
    return widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy()
        && !isCell(widget);
}

// What a screen reader says first.
QString spokenName(QWidget *widget)
{
    const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

// Colours of words that a highlighter sets.
void addPaleWords(const QTextEdit *edit, QStringList &found)
{
    for (QTextBlock block = edit->document()->begin(); block.isValid(); block = block.next()) {
        const auto formats = block.layout()->formats();
        for (const auto &range : formats) {
            const QColor ground = edit->palette().color(QPalette::Base);
            const double contrast = TextSpots::contrast(range.format.foreground().color(), ground);
            if (edit->isEnabled() && range.format.hasProperty(QTextFormat::ForegroundBrush)
                && contrast < leastContrast) {
                found.append(QString("%1 \"%2\": %3")
                                 .arg(nameOf(edit), block.text().mid(range.start, range.length))
                                 .arg(contrast, 0, 'f', 1));
            }
        }
    }
}

QRect placeOf(const QWidget *widget, const QWidget *form)
{
    return {widget->mapTo(form, QPoint(0, 0)), widget->size()};
}

bool followsTheEye(const QRect &from, const QRect &to)
{
    const bool isBelow = to.top() >= from.bottom() - 2;
    const bool isBeside = to.left() >= from.right() - 2 && to.bottom() > from.top();
    return isBelow || isBeside;
}

// The tabs of the live values are white on a blue of 3.3 to 1 on purpose: users know them so.
bool isLiveTab(const QWidget *widget)
{
    const QWidget *tabs = qobject_cast<const QTabBar *>(widget) ? widget->parentWidget() : nullptr;
    return tabs && tabs->styleSheet().contains("#1296db");
}

} // namespace

QStringList Inspector::paleTexts(const QWidget *form, const QImage &picture)
{
    QStringList found;
    const double scale = picture.devicePixelRatio();
    const auto spots = TextSpots::of(form);
    for (const TextSpot &spot : spots) {
        const QRect seen = spot.area & spot.widget->visibleRegion().boundingRect();
        if (!spot.enabled || seen.width() < 4 || seen.height() < spot.area.height()) {
            continue;
        }
        const QPoint corner = spot.widget->mapTo(form, seen.topLeft()) * scale;
        const double contrast = TextSpots::contrastIn(picture, QRect(corner, seen.size() * scale));
        if (contrast < leastContrast && !isLiveTab(spot.widget)) {
            found.append(QString("%1: %2").arg(nameOf(spot)).arg(contrast, 0, 'f', 1));
        }
    }
    const auto edits = form->findChildren<QTextEdit *>();
    for (const QTextEdit *edit : edits) {
        addPaleWords(edit, found);
    }
    return found;
}

QStringList Inspector::paleIcons(const QWidget *form, const QImage &picture)
{
    QStringList found;
    const auto widgets = shownWidgets(form);
    for (const QWidget *widget : widgets) {
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const bool isTabClose = button && qobject_cast<const QTabBar *>(button->parentWidget());
        if (!button || !button->isEnabled() || !button->text().isEmpty()
            || (button->icon().isNull() && !isTabClose)
            || button->visibleRegion().boundingRect() != button->rect()) {
            continue;
        }
        const double scale = picture.devicePixelRatio();
        QRect inside = placeOf(button, form).adjusted(3, 3, -3, -3); // without a frame
        inside = QRect(inside.topLeft() * scale, inside.size() * scale);
        const double contrast = TextSpots::contrastIn(picture, inside);
        if (contrast < leastIconContrast) {
            found.append(QString("%1: %2").arg(nameOf(button)).arg(contrast, 0, 'f', 1));
        }
    }
    return found;
}

QStringList Inspector::cutOffTexts(const QWidget *form)
{
    QStringList found;
    const auto spots = TextSpots::of(form);
    for (const TextSpot &spot : spots) {
        if (spot.cutOff && !spot.toolTip.contains(spot.text)) {
            found.append(nameOf(spot));
        }
    }
    const auto widgets = shownWidgets(form);
    for (const QWidget *widget : widgets) {
        const int least = widget->fontMetrics().averageCharWidth() * leastLineEdit;
        if (qobject_cast<const QLineEdit *>(widget) && !isCell(widget) && widget->width() < least) {
            found.append(nameOf(widget));
        }
    }
    return found;
}

QStringList Inspector::sidewaysPages(const QWidget *form)
{
    QStringList found;
    const auto areas = form->findChildren<QScrollArea *>();
    for (const QScrollArea *area : areas) {
        if (area->isVisible() && area->horizontalScrollBar()->maximum() > 0) {
            found.append(QString("%1 is %2 too wide")
                             .arg(nameOf(area->widget()))
                             .arg(area->horizontalScrollBar()->maximum()));
        }
    }
    return found;
}

QStringList Inspector::namelessThings(const QWidget *form)
{
    QStringList found;
    const auto widgets = shownWidgets(form);
    for (QWidget *widget : widgets) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        if (label && (label->text().endsWith(QLatin1Char(':')) || label->text().endsWith(QChar(0xff1a)))
            && !label->buddy()) {
            found.append("no buddy: " + label->text());
        }
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        if (button && button->text().isEmpty() && !button->icon().isNull()
            && (button->toolTip().isEmpty() || button->accessibleName().isEmpty())) {
            found.append("an icon only: " + nameOf(button));
        }
        // Tables and trees speak through their cells.
        if (isInput(widget) && !qobject_cast<QAbstractItemView *>(widget) && spokenName(widget).isEmpty()) {
            found.append("no name: " + nameOf(widget));
        }
    }
    return found;
}

QStringList Inspector::strayTabs(QWidget *form)
{
    QWidgetList visited;
    QStringList found;
    QApplication::setActiveWindow(form);
    if (!QTest::qWaitForWindowActive(form)) {
        return {"not active"};
    }
    for (int step = 0; step < mostSteps; ++step) {
        QWidget *at = QApplication::focusWidget();
        if (at && visited.contains(at)) {
            break;
        }
        if (at) {
            visited.append(at);
            if (!canBeSeen(at)) {
                found.append("not to be seen: " + nameOf(at));
            }
        }
        QTest::keyClick(at ? at : form, Qt::Key_Tab);
    }
    QWidgetList inputs;
    const auto shown = shownWidgets(form);
    for (QWidget *widget : shown) {
        if (isInput(widget)) {
            inputs.append(widget);
            // A table may hand the focus on to a cell.
            const bool reached = std::any_of(visited.cbegin(), visited.cend(), [widget](QWidget *at) {
                return at == widget
                    || (qobject_cast<QAbstractItemView *>(widget) && widget->isAncestorOf(at));
            });
            if (!reached) {
                found.append("not reached: " + nameOf(widget));
            }
        }
    }
    if (qobject_cast<QMainWindow *>(form)) {
        return found; // its docks stand where the user puts them
    }
    const QWidget *last = nullptr;
    for (const QWidget *widget : qAsConst(visited)) {
        if (!inputs.contains(const_cast<QWidget *>(widget))) {
            continue;
        }
        if (last && !followsTheEye(placeOf(last, form), placeOf(widget, form))) {
            found.append(QString("%1 before %2").arg(nameOf(last), nameOf(widget)));
        }
        last = widget;
    }
    return found;
}

QStringList Inspector::tablesWithoutCopy(const QWidget *form)
{
    QStringList found;
    const auto shown = shownWidgets(form);
    for (const QWidget *widget : shown) {
        const auto *view = qobject_cast<const QAbstractItemView *>(widget);
        if (!view || qobject_cast<const QTreeView *>(view) || qobject_cast<const QHeaderView *>(view)) {
            continue;
        }
        const QModelIndex cell = view->model()->index(0, view->model()->columnCount() > 1 ? 1 : 0);
        view->selectionModel()->select(cell, QItemSelectionModel::ClearAndSelect);
        QApplication::clipboard()->setText("nothing");
        auto *copy = view->findChild<QAction *>("copy", Qt::FindDirectChildrenOnly);
        if (copy && copy->shortcut() == QKeySequence(QKeySequence::Copy)) {
            copy->trigger();
        }
        const QString text = QApplication::clipboard()->text();
        if (text.isEmpty() || text == "nothing") {
            found.append(nameOf(view));
        }
    }
    return found;
}

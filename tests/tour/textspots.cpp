#include "textspots.h"

#include "widgets/quietline.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMap>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QTabBar>
#include <QTextEdit>
#include <QTextLayout>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>
#include <cmath>

namespace {

using Spots = QVector<TextSpot>;

int widthOf(const QWidget *widget, const QString &text)
{
    return widget->fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

bool isSmallerThanItsHint(const QWidget *widget)
{
    const QSize hint = widget->sizeHint();
    return widget->width() < hint.width() || widget->height() < hint.height();
}

void addLabel(const QLabel *label, Spots &spots)
{
    const bool cutOff = label->wordWrap() ? label->heightForWidth(label->width()) > label->height()
                                          : isSmallerThanItsHint(label);
    spots.append({label, label->text(), label->contentsRect(), cutOff, label->toolTip()});
}

// The text stands behind the icon, both in the middle.
void addPushButton(const QPushButton *button, Spots &spots)
{
    const int text = widthOf(button, button->text());
    const int icon = button->icon().isNull() ? 0 : button->iconSize().width() + 4;
    const int left = (button->width() - icon - text) / 2 + icon;
    spots.append({button, button->text(), QRect(left, 4, text, button->height() - 8),
                  isSmallerThanItsHint(button), button->toolTip()});
}

void addToolButton(const QToolButton *button, Spots &spots)
{
    if (button->toolButtonStyle() != Qt::ToolButtonTextUnderIcon) {
        return; // no other shows a text
    }
    const int line = button->fontMetrics().height();
    const QRect bottom(4, button->height() - line - 4, button->width() - 8, line);
    spots.append({button, button->text(), bottom, isSmallerThanItsHint(button), button->toolTip()});
}

void addIndicated(const QAbstractButton *button, QStyle::SubElement contents, Spots &spots)
{
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    spots.append({button, button->text(), button->style()->subElementRect(contents, &option, button),
                  isSmallerThanItsHint(button), button->toolTip()});
}

void addLineEdit(const QLineEdit *edit, Spots &spots)
{
    const bool isEmpty = edit->displayText().isEmpty();
    const QString text = isEmpty ? edit->placeholderText() : edit->displayText();
    // What is typed scrolls; what is said in its place does not.
    const bool cutOff = isEmpty && widthOf(edit, text) > edit->width() - 8;
    spots.append({edit, text, edit->rect().adjusted(4, 3, -20, -3), cutOff, edit->toolTip()});
}

void addComboBox(const QComboBox *box, Spots &spots)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    option.editable = box->isEditable();
    const QRect field =
        box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
    spots.append({box, box->currentText(), field.adjusted(1, 1, -1, -1),
                  widthOf(box, box->currentText()) > field.width(), box->toolTip()});
}

void addGroupBox(const QGroupBox *box, Spots &spots)
{
    QStyleOptionGroupBox option;
    option.initFrom(box);
    option.text = box->title();
    option.subControls = QStyle::SC_GroupBoxLabel | QStyle::SC_GroupBoxFrame;
    const QRect title =
        box->style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, box);
    spots.append({box, box->title(), title, widthOf(box, box->title()) > box->width(), box->toolTip()});
}

void addHeader(const QHeaderView *header, Spots &spots)
{
    const int margin = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    for (int section = 0; section < header->count(); ++section) {
        const QString text = header->model()->headerData(section, header->orientation()).toString();
        const QString toolTip =
            header->model()->headerData(section, header->orientation(), Qt::ToolTipRole).toString();
        const int place = header->sectionViewportPosition(section);
        const int size = header->sectionSize(section);
        if (header->isSectionHidden(section)) {
            continue;
        }
        const bool across = header->orientation() == Qt::Horizontal;
        const QRect area =
            across ? QRect(place, 0, size, header->height()) : QRect(0, place, header->width(), size);
        spots.append({header->viewport(), text, area.adjusted(3, 3, -3, -3),
                      widthOf(header, text) + margin > area.width(), toolTip});
    }
}

// A list that breaks lines makes its rows as high as they need.
bool isCutOff(const QAbstractItemView *view, const QString &text, const QRect &area)
{
    const auto *list = qobject_cast<const QListView *>(view);
    if (list && list->wordWrap()) {
        const QRect room(0, 0, area.width(), 0);
        return view->fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height() > area.height() + 4;
    }
    return widthOf(view, text) > area.width();
}

// Rows that are in sight, those of a tree from the top of its viewport.
void addCells(const QAbstractItemView *view, const QModelIndex &parent, Spots &spots)
{
    const QAbstractItemModel *model = view->model();
    for (int row = 0; model && row < model->rowCount(parent); ++row) {
        for (int column = 0; column < model->columnCount(parent); ++column) {
            const QModelIndex index = model->index(row, column, parent);
            QRect area = view->visualRect(index).adjusted(3, 2, -3, -2);
            if (index.data(Qt::DecorationRole).isValid()) {
                area.setLeft(area.left() + view->style()->pixelMetric(QStyle::PM_SmallIconSize) + 6);
            }
            const QString text = index.data().toString();
            if (!view->indexWidget(index) && area.isValid()) {
                const bool enabled = view->isEnabled() && (index.flags() & Qt::ItemIsEnabled) != 0;
                // What can be edited is read in its editor, which scrolls.
                const bool cutOff = (index.flags() & Qt::ItemIsEditable) == 0 && isCutOff(view, text, area);
                spots.append(
                    {view->viewport(), text, area, cutOff, index.data(Qt::ToolTipRole).toString(), enabled});
            }
        }
        if (qobject_cast<const QTreeView *>(view)) {
            addCells(view, model->index(row, 0, parent), spots);
        }
    }
}

void addTabs(const QTabBar *bar, Spots &spots)
{
    for (int tab = 0; tab < bar->count(); ++tab) {
        QRect area = bar->tabRect(tab).adjusted(4, 5, -4, -5);
        if (const QWidget *button = bar->tabButton(tab, QTabBar::RightSide)) {
            area.setRight(button->geometry().left() - 1);
        }
        spots.append({bar, bar->tabText(tab), area, widthOf(bar, bar->tabText(tab)) > area.width(),
                      bar->tabToolTip(tab)});
    }
}

void addMenus(const QMenuBar *bar, Spots &spots)
{
    const auto actions = bar->actions();
    for (QAction *action : actions) {
        spots.append({bar, action->text(), bar->actionGeometry(action).adjusted(3, 3, -3, -3)});
    }
}

void addSpots(const QWidget *widget, Spots &spots)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        addLabel(label, spots);
    } else if (const auto *line = qobject_cast<const QuietLine *>(widget)) {
        spots.append(
            {line, line->text(), line->rect(), line->width() < line->sizeHint().width(), line->toolTip()});
    } else if (const auto *push = qobject_cast<const QPushButton *>(widget)) {
        addPushButton(push, spots);
    } else if (const auto *tool = qobject_cast<const QToolButton *>(widget)) {
        addToolButton(tool, spots);
    } else if (const auto *check = qobject_cast<const QCheckBox *>(widget)) {
        addIndicated(check, QStyle::SE_CheckBoxContents, spots);
    } else if (const auto *radio = qobject_cast<const QRadioButton *>(widget)) {
        addIndicated(radio, QStyle::SE_RadioButtonContents, spots);
    } else if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
        addLineEdit(edit, spots);
    } else if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        addComboBox(box, spots);
    } else if (const auto *group = qobject_cast<const QGroupBox *>(widget)) {
        addGroupBox(group, spots);
    } else if (const auto *header = qobject_cast<const QHeaderView *>(widget)) {
        addHeader(header, spots);
    } else if (const auto *view = qobject_cast<const QAbstractItemView *>(widget)) {
        addCells(view, view->rootIndex(), spots);
    } else if (const auto *tabs = qobject_cast<const QTabBar *>(widget)) {
        addTabs(tabs, spots);
    } else if (const auto *menus = qobject_cast<const QMenuBar *>(widget)) {
        addMenus(menus, spots);
    } else if (const auto *bar = qobject_cast<const QProgressBar *>(widget)) {
        spots.append({bar, bar->text(), bar->rect().adjusted(2, 2, -2, -2)});
    } else if (const auto *lines = qobject_cast<const QPlainTextEdit *>(widget)) {
        spots.append({lines->viewport(), lines->toPlainText(), lines->viewport()->rect()});
    } else if (const auto *script = qobject_cast<const QTextEdit *>(widget)) {
        spots.append({script->viewport(), script->toPlainText(), script->viewport()->rect()});
    }
}

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

} // namespace

QVector<TextSpot> TextSpots::of(const QWidget *root)
{
    QList<const QWidget *> widgets{root};
    const auto children = root->findChildren<QWidget *>();
    std::copy(children.cbegin(), children.cend(), std::back_inserter(widgets));
    Spots found;
    for (const QWidget *widget : qAsConst(widgets)) {
        if (widget->isVisible() && widget->window() == root) {
            Spots spots;
            addSpots(widget, spots);
            for (TextSpot &spot : spots) {
                spot.enabled = spot.enabled && widget->isEnabled();
                if (!spot.text.isEmpty()) {
                    found.append(spot);
                }
            }
        }
    }
    return found;
}

double TextSpots::contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one);
    const double second = luminance(other);
    return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}

double TextSpots::contrastIn(const QImage &image, const QRect &area)
{
    // Row by row: the ground of a button is a gradient from top to bottom.
    double strongest = 1;
    const QRect inside = area & image.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        QMap<QRgb, int> counts;
        for (int x = inside.left(); x <= inside.right(); ++x) {
            ++counts[image.pixel(x, y)];
        }
        const auto ground = std::max_element(counts.cbegin(), counts.cend());
        for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
            strongest = qMax(strongest, contrast(QColor(count.key()), QColor(ground.key())));
        }
    }
    return strongest;
}

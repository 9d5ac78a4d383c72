#pragma once

#include "workspacefake.h"

#include <QList>
#include <QPair>
#include <QStandardItemModel>
#include <QVector>

#include <functional>

class QWidget;

// What the exhibits show: items of an imaginary project.
class GalleryStock
{
public:
    using Roles = QList<QPair<int, QVariant>>;

    // A new item in a folder, which belongs to the stock.
    QStandardItem *item(const char *name, const Roles &roles);

    WorkspaceFake workspace;
    bool english = true; // the language of a window that brings its own

private:
    QStandardItemModel m_model;
};

// A form, dialog or window of the program with typical content.
struct Exhibit {
    enum class Place {
        Tab,    // a form, shown in the size that the tab of a common screen leaves it
        Window, // shown in the size that it takes itself
    };

    const char *name; // of its pictures
    Place place;
    std::function<QWidget *(GalleryStock &)> make; // the caller owns it
};

// All of them, those that bring a language along last.
QVector<Exhibit> galleryExhibits();

#pragma once

#include <QList>
#include <QMap>
#include <QMetaType>
#include <QPair>
#include <QString>
#include <QVariantList>
#include <QVector>

class QIcon;
class QModelIndex;
class QStandardItem;
class QStandardItemModel;

// Rows of a table as a list role holds them: one QVariantList a row, each cell a QString.
using RowList = QList<QVariantList>;
// Tab title to rows, as standardDatasRole holds it; row 0 of each entry has the tab's own settings.
using GroupMap = QMap<QString, QList<QVariantList>>;
Q_DECLARE_METATYPE(QList<QVariantList>)

// The shape of the project tree: project, its four fixed folders, definitions below these. The item text is
// the name everywhere, and the folder texts are compared by logic, so they are never translated.
namespace ProjectTree {

// The fixed folders of a project, by their rows. Logic finds a folder by its text or by its row.
enum FolderRow : int { StandardRow, ServiceRow, BoxRow, DataRow };

extern const QString standardFolder; // "Standard"
extern const QString serviceFolder;  // "Service"
extern const QString boxFolder;      // "Box"
extern const QString dataFolder;     // "Data"
// Folders that no project is given and that are known all the same.
extern const QString plcFolder;    // "PLC"
extern const QString serverFolder; // "Server"

// Values of an item, each with its role.
using Roles = QVector<QPair<int, QVariant>>;

enum class Level { Project, Folder, Definition };

// Level by depth; anything below a folder counts as a definition. The item must not be null.
Level levelOf(const QStandardItem *item);
// The item of an index of a project tree, or null.
QStandardItem *itemAt(const QModelIndex &index);
// The top-level item above (or at) the item; null for null.
QStandardItem *projectOf(QStandardItem *item);
// The first child with exactly this text, another one than the last argument; or null.
QStandardItem *childNamed(const QStandardItem *parent, const QString &text,
                          const QStandardItem *except = nullptr);
// The first top-level item with exactly this name, another one than the last argument; or null.
QStandardItem *projectNamed(const QStandardItemModel &model, const QString &name,
                            const QStandardItem *except = nullptr);

// A detached project item with its path and description and no folders.
QStandardItem *makeProject(const QString &name, const QString &path, const QString &description);
// Appends whichever of the four folders is missing, in their order, each with its icon.
void appendMissingFolders(QStandardItem *project);
// Appends a definition with this name, icon resource (no icon if empty) and roles, and returns it. It has
// them all before it is in the tree, so that whoever hears of the new row finds them.
QStandardItem *appendDefinition(QStandardItem *folder, const QString &name, const QString &icon,
                                const Roles &roles = {});
// As above, with an icon that was read before: reading one costs much more than the item.
QStandardItem *appendDefinition(QStandardItem *folder, const QString &name, const QIcon &icon,
                                const Roles &roles = {});

// Icon resources of definitions; that of a Standard goes by its protocol.
extern const QString boxIcon;
extern const QString serviceIcon;
extern const QString dataIcon;

// A flag as forms store it: the boolean true or the text "true".
bool isTrue(const QVariant &flag);

// Registers the list types of the roles and of imported points with the meta-type system; may be called more
// than once.
void registerTypes();

} // namespace ProjectTree

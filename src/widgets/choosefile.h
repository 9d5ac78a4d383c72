#pragma once

#include <QString>

class QWidget;

// Unlike QFileDialog's own static functions these survive the death of the parent while the dialog is open,
// and return an empty text then, as for a cancelled dialog. Each begins in the folder; where that is empty,
// in one that Qt chooses.

// The path of an existing file that the user chooses.
QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter);
// The path of a file to be written, which may exist if the user agrees to replace it. The filter, or each of
// several with ";;" between them, is of one ending, which a name that is typed without one gets. The name is
// offered, without what no file may have in its name; it may be empty.
QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter,
                       const QString &name = {});
// As chooseSaveFile(), for a file that is added to: one that exists is taken without a question.
QString chooseGrowingFile(QWidget *parent, const QString &caption, const QString &folder,
                          const QString &filter, const QString &name);
// The text without what no file may have in its name, on any system, since the file may be carried to
// another; cut off where it is too long for one.
QString asFileName(QString name);

// The folder of the file that was chosen last by either function; empty before the first one.
QString lastUsedFolder();

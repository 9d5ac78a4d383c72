#pragma once

class QString;
class QWidget;

// Unlike QFileDialog's own static functions these survive the death of the parent while the dialog is open,
// and return an empty text then, as for a cancelled dialog. Each begins in the folder.

// The path of an existing file that the user chooses.
QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter);
// The path of a file to be written, which may exist if the user agrees to replace it.
QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter);

#pragma once

class QString;
class QWidget;

// The path of an existing file that the user chooses, beginning in the folder, or an empty text. Unlike
// QFileDialog's own static function it survives the death of the parent while the dialog stands.
QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter);

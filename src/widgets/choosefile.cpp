#include "widgets/choosefile.h"

#include <QFileDialog>
#include <QPointer>

QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter)
{
    QPointer<QFileDialog> dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {};
    }
    dialog->deleteLater();
    return accepted ? dialog->selectedFiles().value(0) : QString();
}

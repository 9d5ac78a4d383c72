#include "widgets/choosefile.h"

#include <QFileDialog>
#include <QPointer>

namespace
{

QString chosenPath(QFileDialog *made)
{
    const QPointer<QFileDialog> dialog(made);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {};
    }
    dialog->deleteLater();
    return accepted ? dialog->selectedFiles().value(0) : QString();
}

} // namespace

QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter)
{
    auto *dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return chosenPath(dialog);
}

QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter)
{
    auto *dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    return chosenPath(dialog);
}

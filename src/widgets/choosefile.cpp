#include "widgets/choosefile.h"

#include <QFileDialog>
#include <QPointer>
#include <QRegularExpression>

namespace {

constexpr int longestName = 200; // bytes of UTF-8; file systems take 255, an ending included

QString &usedFolder()
{
    static QString folder;
    return folder;
}

QString chosenPath(QFileDialog *made)
{
    const QPointer<QFileDialog> dialog(made);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog) {
        return {};
    }
    dialog->deleteLater();
    const QString path = accepted ? dialog->selectedFiles().value(0) : QString();
    if (!path.isEmpty()) {
        usedFolder() = QFileInfo(path).absolutePath();
    }
    return path;
}

// "csv" of "Values (*.csv)".
QString endingOf(const QString &filter)
{
    static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
    return pattern.match(filter).captured(1);
}

QFileDialog *saveDialog(QWidget *parent, const QString &caption, const QString &folder, const QString &filter,
                        const QString &name)
{
    auto *dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(endingOf(filter));
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog,
                     [dialog](const QString &selected) { dialog->setDefaultSuffix(endingOf(selected)); });
    if (!name.isEmpty()) {
        dialog->selectFile(asFileName(name) + QLatin1Char('.') + endingOf(filter));
    }
    return dialog;
}

} // namespace

QString asFileName(QString name)
{
    static const QRegularExpression refused(QStringLiteral("[\\x{00}-\\x{1F}/\\\\:*?\"<>|]"));
    name.replace(refused, QStringLiteral("_"));
    while (name.toUtf8().size() > longestName) {
        name.chop(name.size() > 1 && name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    }
    return name;
}

QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter)
{
    auto *dialog = new QFileDialog(parent, caption, folder, filter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return chosenPath(dialog);
}

QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &folder, const QString &filter,
                       const QString &name)
{
    return chosenPath(saveDialog(parent, caption, folder, filter, name));
}

QString chooseGrowingFile(QWidget *parent, const QString &caption, const QString &folder,
                          const QString &filter, const QString &name)
{
    QFileDialog *dialog = saveDialog(parent, caption, folder, filter, name);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    return chosenPath(dialog);
}

QString lastUsedFolder()
{
    return usedFolder();
}

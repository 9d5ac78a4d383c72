#include "trends/trendsaver.h"

#include "trends/valuesaver.h"
#include "widgets/choosefile.h"
#include "widgets/tell.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPointer>
#include <QSaveFile>
#include <QWidget>

namespace {

bool saveImage(const QImage &image, const QString &path)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit();
}

} // namespace

void TrendSaver::copy(const TrendPicture &picture, const QSize &size, const QPalette &desktop)
{
    auto *data = new QMimeData; // the clipboard's
    data->setImageData(picture.image(size, desktop));
    data->setText(picture.text());
    QApplication::clipboard()->setMimeData(data);
}

QString TrendSaver::pictureFile(QWidget *window, const QString &name)
{
    const QString filters = tr("PNG Pictures (*.png)") + QStringLiteral(";;") + tr("SVG Pages (*.svg)");
    return chooseSaveFile(window, tr("Save Picture"), lastUsedFolder(), filters, name);
}

void TrendSaver::savePicture(QWidget *window, const TrendPicture &picture, const QString &path)
{
    const bool isSvg = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
    const bool isSaved =
        isSvg ? picture.saveSvg(path) : saveImage(picture.image(window->size(), window->palette()), path);
    if (!isSaved) {
        Tell::warning(window, tr("Save Picture"), tr("The file %1 could not be written.").arg(path));
    }
}

void TrendSaver::saveValues(QWidget *window, std::vector<ValueTable::Column> columns, const TimeRange &range,
                            const QString &name)
{
    const QPointer<QWidget> alive(window);
    const QString path =
        chooseSaveFile(window, tr("Save Values"), lastUsedFolder(), tr("CSV Files (*.csv)"), name);
    if (alive && !path.isEmpty()) {
        (new ValueSaver(std::move(columns), range, path, window))->start();
    }
}

#include "trends/trendsaver.h"

#include "trends/figuremodel.h"
#include "trends/markvalues.h"
#include "trends/trendfeed.h"
#include "trends/trendplot.h"
#include "trends/valuesaver.h"
#include "widgets/choosefile.h"
#include "widgets/tell.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QMimeData>
#include <QPointer>
#include <QSaveFile>

namespace {

bool saveImage(const QImage &image, const QString &path)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.commit();
}

} // namespace

TrendSaver::TrendSaver(const Parts &parts, QWidget *window)
    : QObject(window)
    , m_parts(parts)
    , m_window(window)
{
}

void TrendSaver::copy() const
{
    const TrendPicture trend = picture();
    auto *data = new QMimeData; // the clipboard's
    data->setImageData(trend.image(m_window->size(), m_window->palette()));
    data->setText(trend.text());
    QApplication::clipboard()->setMimeData(data);
}

// As the trend is once the file is named, which takes a while.
void TrendSaver::savePicture()
{
    const QPointer<TrendSaver> self(this); // dialogs may outlive it
    const QString filters = tr("PNG Pictures (*.png)") + QStringLiteral(";;") + tr("SVG Pages (*.svg)");
    const QString path = chooseSaveFile(m_window, tr("Save Picture"), lastUsedFolder(), filters, fileName());
    if (!self || path.isEmpty()) {
        return;
    }
    const bool isSvg = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
    const bool isSaved = isSvg ? picture().saveSvg(path)
                               : saveImage(picture().image(m_window->size(), m_window->palette()), path);
    if (!isSaved) {
        Tell::warning(m_window, tr("Save Picture"), tr("The file %1 could not be written.").arg(path));
    }
}

// As they are when it is asked for.
void TrendSaver::saveValues()
{
    const TimeRange range = m_parts.plot->view().range();
    std::vector<ValueTable::Column> columns = m_parts.feed->values(shown(), range);
    const QPointer<TrendSaver> self(this);
    const QString path =
        chooseSaveFile(m_window, tr("Save Values"), lastUsedFolder(), tr("CSV Files (*.csv)"), fileName());
    if (self && !path.isEmpty()) {
        (new ValueSaver(std::move(columns), range, path, m_window))->start();
    }
}

QVector<PointId> TrendSaver::shown() const
{
    QVector<PointId> shown;
    for (const Curve &curve : m_parts.figures->curves()) {
        if (curve.shown) {
            shown.append(curve.point.id);
        }
    }
    return shown;
}

TrendPicture TrendSaver::picture() const
{
    return {m_parts.figures,
            m_parts.plot->view(),
            m_parts.marks->markers(),
            {m_window->windowTitle(), m_parts.feed->sources(shown())}};
}

QString TrendSaver::fileName() const
{
    const QDateTime end = QDateTime::fromMSecsSinceEpoch(m_parts.plot->view().range().to);
    return m_window->windowTitle() + QLatin1Char(' ') + end.toString(QStringLiteral("yyyy-MM-dd hh-mm-ss"));
}

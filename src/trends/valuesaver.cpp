#include "trends/valuesaver.h"

#include "widgets/tell.h"

#include <QDir>
#include <QProgressDialog>
#include <QSaveFile>

#include <functional>

namespace {

// Tells the time of each sample, and ends where it is told to.
class WatchedCursor : public SampleCursor
{
public:
    using Watch = std::function<bool(qint64 time)>; // false ends it

    WatchedCursor(std::unique_ptr<SampleCursor> samples, Watch watch)
        : m_samples(std::move(samples))
        , m_watch(std::move(watch))
    {
    }

    bool next(Sample *sample) override { return m_samples->next(sample) && m_watch(sample->time); }
    QString error() const override { return m_samples->error(); }

private:
    std::unique_ptr<SampleCursor> m_samples;
    Watch m_watch;
};

} // namespace

ValueSaver::ValueSaver(std::vector<ValueTable::Column> columns, const TimeRange &range, const QString &path,
                       QWidget *window)
    : QThread(window)
    , m_columns(std::move(columns))
    , m_path(path)
{
    // The samples of all columns pass in the order of time.
    const auto watch = [this, range](qint64 time) {
        const double share = double(time - range.from) / double(qMax<qint64>(1, range.to - range.from));
        const int percent = int(99 * share); // at 100 the dialog would close
        if (percent > m_percent) {
            m_percent = percent;
            emit progressed(percent);
        }
        return !m_isCancelled;
    };
    for (ValueTable::Column &column : m_columns) {
        column.samples = std::make_unique<WatchedCursor>(std::move(column.samples), watch);
    }
    connect(this, &QThread::finished, this, &ValueSaver::end);
    showProgress();
}

ValueSaver::~ValueSaver()
{
    m_isCancelled = true;
    wait();
}

void ValueSaver::showProgress()
{
    const QString text = tr("Saving values to %1").arg(QDir::toNativeSeparators(m_path));
    m_progress = new QProgressDialog(text, tr("Cancel"), 0, 100, qobject_cast<QWidget *>(parent()));
    m_progress->setWindowTitle(tr("Save Values"));
    m_progress->setMinimumDuration(patience);
    // The keys stay with the trend.
    m_progress->setAttribute(Qt::WA_ShowWithoutActivating);
    m_progress->setValue(0); // begins to wait
    connect(this, &ValueSaver::progressed, m_progress, &QProgressDialog::setValue);
    connect(m_progress, &QProgressDialog::canceled, this, [this] { m_isCancelled = true; });
}

void ValueSaver::run()
{
    QSaveFile file(m_path);
    m_isSaved = file.open(QIODevice::WriteOnly) && ValueTable::write(&file, std::move(m_columns), &m_error)
        && !m_isCancelled && file.commit();
    if (!m_isSaved && m_error.isEmpty()) {
        m_error = file.errorString();
    }
}

void ValueSaver::end()
{
    if (m_progress) {
        m_progress->reset(); // else it could still show itself
        m_progress->deleteLater();
    }
    const QPointer<ValueSaver> self(this);
    if (!m_isSaved && !m_isCancelled) {
        const QString text = tr("The file %1 could not be written.").arg(m_path);
        Tell::warning(qobject_cast<QWidget *>(parent()), tr("Save Values"),
                      text + QLatin1Char('\n') + m_error);
    }
    if (self) {
        deleteLater();
    }
}

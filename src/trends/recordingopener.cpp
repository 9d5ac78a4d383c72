#include "trends/recordingopener.h"

#include "history/recordingreader.h"
#include "trends/pointpicker.h"
#include "trends/recordingdialog.h"
#include "widgets/tell.h"

#include <QProgressDialog>

namespace {

constexpr int patience = 700;   // ms, until a window says that it takes longer
constexpr int firstPoints = 16; // that are chosen to begin with

} // namespace

RecordingOpener::RecordingOpener(QWidget *over, QObject *parent)
    : QObject(parent)
    , m_over(over)
{
    if (over) {
        connect(over, &QObject::destroyed, this, &QObject::deleteLater); // nobody could cancel it any more
    }
}

void RecordingOpener::ask()
{
    const QPointer<RecordingOpener> self(this);
    const RecordingTarget target =
        RecordingDialog::ask(RecordingDialog::Purpose::Open, QString(), QString(), m_over);
    if (!self) {
        return;
    }
    if (target.kind == RecordingTarget::Kind::None) {
        deleteLater();
    } else {
        open(target);
    }
}

void RecordingOpener::open(const RecordingTarget &target)
{
    m_reader = new RecordingReader(this);
    connect(m_reader, &RecordingReader::opened, this, &RecordingOpener::choosePoints);
    connect(m_reader, &RecordingReader::failed, this, &RecordingOpener::fail);
    m_progress = new QProgressDialog(tr("Opening %1").arg(target.text()), tr("Cancel"), 0, 0, m_over);
    m_progress->setAttribute(Qt::WA_DeleteOnClose);
    m_progress->setWindowTitle(tr("Open Recording"));
    m_progress->setMinimumDuration(patience);
    m_progress->setValue(0); // begins to wait
    connect(m_progress, &QProgressDialog::canceled, this, &QObject::deleteLater);
    connect(this, &QObject::destroyed, m_progress, &QObject::deleteLater);
    m_reader->open(target);
}

void RecordingOpener::choosePoints()
{
    m_reader->disconnect(this);
    endProgress();
    const QVector<Point> points = m_reader->points();
    if (points.isEmpty()) {
        fail(tr("The recording holds no points."));
        return;
    }
    const QPointer<RecordingOpener> self(this);
    const QPointer<PointPicker> choice(new PointPicker(points, m_over));
    choice->chooseFirst(firstPoints);
    const bool accepted = choice->exec() == QDialog::Accepted;
    if (choice) {
        choice->deleteLater();
    }
    if (!self) {
        return;
    }
    if (accepted && choice && !choice->chosen().isEmpty()) {
        m_reader->setParent(nullptr);
        emit opened(m_reader, choice->chosen());
    }
    deleteLater();
}

void RecordingOpener::endProgress()
{
    if (m_progress) {
        m_progress->reset(); // else it could still show itself
        m_progress->deleteLater();
    }
}

void RecordingOpener::fail(const QString &why)
{
    endProgress();
    const QPointer<RecordingOpener> self(this);
    Tell::warning(m_over, tr("Open Recording"), why);
    if (self) {
        deleteLater();
    }
}

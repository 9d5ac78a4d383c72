#include "trends/trendwindow.h"

#include "trends/figuremodel.h"
#include "trends/figuretable.h"
#include "trends/markvalues.h"
#include "trends/pointpicker.h"
#include "trends/readout.h"
#include "trends/recordingline.h"
#include "trends/trendfeed.h"
#include "trends/trendmarks.h"
#include "trends/trendnote.h"
#include "trends/trendplot.h"
#include "trends/trendsaver.h"
#include "trends/trendtexts.h"
#include "trends/viewcontrol.h"
#include "widgets/quietline.h"
#include "widgets/svgicon.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableView>
#include <QTimerEvent>
#include <QToolButton>
#include <QVBoxLayout>

using Tool = TrendTools::Tool;

namespace {

constexpr QSize firstSize{1200, 660}; // fits a screen of 1366 x 768
constexpr int leastPlotHeight = 200;  // pixels; by itself a plot asks for much more, by its scales

} // namespace

TrendWindow::TrendWindow(SampleSource *source, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_feed(new TrendFeed(source, this))
    , m_tools(new TrendTools(this))
    , m_plot(new TrendPlot(this))
    , m_table(new FigureTable(this))
    , m_figures(m_table->figures())
    , m_marks(new TrendMarks(this))
    , m_control(new ViewControl(m_plot, m_marks, [this] { return m_feed->extent(); }))
    , m_sources(new QuietLine(this))
    , m_markerLine(new QuietLine(this))
    , m_values(new MarkValues(m_feed, m_marks,
                              {m_plot, new Readout(m_plot->canvas()), m_figures, m_markerLine}, this))
    , m_recording(new RecordingLine(this))
    , m_note(new TrendNote(this))
    , m_hint(new QLabel(tr("Drop rows of live values here, press Add... to choose points, or Open... to "
                           "show a recording"),
                        this))
    , m_pages(new QStackedWidget(this))
    , m_splitter(new QSplitter(Qt::Vertical, this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptDrops(true);
    setWindowIcon(svgIcon(QStringLiteral(":/adsdemo/images/trend.svg")));
    layOut();
    setWorks();
    addKeys();
    connectParts();
    connectSource();
    m_redraw.setSingleShot(true);
    connect(&m_redraw, &QTimer::timeout, this, &TrendWindow::redraw);
    m_control->setView(m_feed->firstView());
    showTitle();
    resize(firstSize);
}

// A source that is a child of the window goes when most of the window is gone.
TrendWindow::~TrendWindow()
{
    if (source()) {
        disconnect(source(), nullptr, this, nullptr);
    }
}

void TrendWindow::layOut()
{
    m_hint->setObjectName(QStringLiteral("hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_sources->setObjectName(QStringLiteral("sources"));
    m_sources->hide();
    m_markerLine->setObjectName(QStringLiteral("markerLine"));
    m_plot->setMinimumHeight(leastPlotHeight);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_plot);
    m_splitter->addWidget(m_table);
    m_splitter->setStretchFactor(0, 1);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] { m_heightsOfUser = true; });
    m_pages->addWidget(m_hint);
    m_pages->addWidget(m_splitter);
    m_plot->canvas()->installEventFilter(this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tools);
    layout->addWidget(m_recording);
    layout->addWidget(m_note);
    layout->addWidget(m_sources);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_markerLine);
}

void TrendWindow::addKeys()
{
    const struct {
        QKeySequence key;
        Tool tool;
    } keys[] = {{Qt::Key_Insert, Tool::Add},
                {int(Qt::CTRL) + int(Qt::Key_R), Tool::Record},
                {QKeySequence::Open, Tool::Open},
                {int(Qt::CTRL) + int(Qt::SHIFT) + int(Qt::Key_C), Tool::Copy},
                {QKeySequence::Save, Tool::SavePicture},
                {int(Qt::CTRL) + int(Qt::Key_E), Tool::SaveValues}};
    for (const auto &row : keys) {
        auto *shortcut = new QShortcut(row.key, this);
        connect(shortcut, &QShortcut::activated, this, [this, tool = row.tool] { use(tool); });
    }
    auto *closing = new QShortcut(QKeySequence(int(Qt::CTRL) + int(Qt::Key_W)), this);
    connect(closing, &QShortcut::activated, this, &QWidget::close);
    auto *copying = new QShortcut(QKeySequence::Copy, m_plot);
    copying->setContext(Qt::WidgetWithChildrenShortcut);
    connect(copying, &QShortcut::activated, this, [this] { use(Tool::Copy); });
}

void TrendWindow::setWorks()
{
    auto *saver = new TrendSaver({m_feed, m_figures, m_plot, m_values}, this);
    m_works = {
        {Tool::Follow, [this] { m_control->toggleFollowing(); }},
        {Tool::Back, [this] { m_control->back(); }},
        {Tool::ZoomIn, [this] { m_control->zoomIn(); }},
        {Tool::ZoomOut, [this] { m_control->zoomOut(); }},
        {Tool::Markers, [this] { m_control->toggleMarkers(); }},
        {Tool::Add, [this] { choosePoints(); }},
        {Tool::Record, [this] { emit recordAsked(); }},
        {Tool::Open, [this] { emit openAsked(); }},
        {Tool::Copy, [saver] { saver->copy(); }},
        {Tool::SavePicture, [saver] { saver->savePicture(); }},
        {Tool::SaveValues, [saver] { saver->saveValues(); }},
    };
}

void TrendWindow::connectParts()
{
    connect(m_tools, &TrendTools::used, this, &TrendWindow::use);
    connect(m_tools, &TrendTools::spanChosen, m_control, &ViewControl::setSpan);
    connect(m_table, &FigureTable::removeAsked, this, &TrendWindow::removeRows);
    connect(m_figures, &FigureModel::curvesChanged, this, &TrendWindow::scheduleRedraw);
    connect(m_control, &ViewControl::viewChanged, this, [this] {
        showTools();
        ask();
        scheduleRedraw();
    });
    // The picture goes on once its values are there, so that figures don't come and go.
    connect(m_control, &ViewControl::viewWentOn, this, &TrendWindow::ask);
    connect(m_marks, &TrendMarks::markersChanged, this, [this] {
        m_plot->setMarkers(m_marks->markers());
        showTools();
        scheduleRedraw();
    });
    connect(m_values, &MarkValues::markersChanged, this, &TrendWindow::scheduleRedraw);
}

void TrendWindow::connectSource()
{
    connect(m_feed, &TrendFeed::answered, this, &TrendWindow::take);
    connect(source(), &SampleSource::grown, this, [this] { m_hasGrown = true; });
    connect(source(), &SampleSource::failed, this,
            [this](const QString &why) { m_note->tell(TrendNote::Failure, why); });
    connect(source(), &QObject::destroyed, this,
            [this] { m_note->tell(TrendNote::Failure, tr("The source of these values is closed")); });
}

void TrendWindow::addPoints(const QVector<Point> &points)
{
    const QVector<PointId> fresh = m_figures->add(points.mid(0, mostAtOnce));
    m_note->tellExcess(points.size(), mostAtOnce);
    if (fresh.isEmpty()) {
        return;
    }
    m_feed->add(fresh);
    tellSources();
    m_pages->setCurrentIndex(1);
    fitTable();
    showTitle();
    if (m_isNew) {
        m_isNew = false;
        m_control->setView(m_feed->firstView());
        m_plot->canvas()->setFocus();
    }
    showTools();
    ask();
}

void TrendWindow::setClock(const std::function<ArrivalClock::Present()> &clock)
{
    m_feed->setClock(clock);
    followPresent();
    tellClock();
}

// As high as its rows need, until the user says how high.
void TrendWindow::fitTable()
{
    if (!m_heightsOfUser) {
        const int height = m_table->sizeHint().height();
        m_splitter->setSizes({qMax(1, m_splitter->height() - height), height});
    }
}

QVector<Point> TrendWindow::points() const
{
    return m_figures->points();
}

SampleSource *TrendWindow::source() const
{
    return m_feed->source();
}

void TrendWindow::setRecordingLine(const QString &text)
{
    m_recording->setText(text);
    showTools();
}

void TrendWindow::use(Tool tool)
{
    const QPointer<TrendWindow> self(this); // dialogs may outlive it
    m_works.value(tool)();
    if (self) {
        showTools();
    }
}

void TrendWindow::choosePoints()
{
    if (!source()) {
        return;
    }
    const QPointer<TrendWindow> self(this);
    const QPointer<PointPicker> picker(new PointPicker(source()->points(), this));
    if (picker->exec() == QDialog::Accepted && self && picker) {
        addPoints(picker->chosen());
    }
    if (picker) {
        picker->deleteLater();
    }
}

void TrendWindow::removeRows(const QVector<int> &rows)
{
    m_feed->remove(m_figures->remove(rows));
    tellSources();
    m_note->tell(TrendNote::Excess, QString());
    if (m_figures->rowCount() == 0) {
        m_pages->setCurrentIndex(0);
    }
    showTitle();
    showTools();
    ask();
}

void TrendWindow::followPresent()
{
    if (m_feed->isGrowing()) {
        m_control->setPresent(m_feed->present());
    }
}

void TrendWindow::ask()
{
    m_feed->ask(m_control->view().range(), m_plot->columns());
    m_values->setScreen(m_control->view().range(), m_feed->present());
}

void TrendWindow::take(const SampleSource::Request &request, const QVector<Thinned> &answers)
{
    m_note->tell(TrendNote::Failure, QString());
    m_answer = Answer{request, answers};
    m_values->setScreen(m_control->view().range(), m_feed->present());
    scheduleRedraw();
}

void TrendWindow::scheduleRedraw()
{
    const bool isSlow = m_control->view().isFollowing() && m_sinceRedraw.isValid();
    const int wait = isSlow ? int(qMax<qint64>(0, tick - m_sinceRedraw.elapsed())) : 0;
    if (!m_redraw.isActive() || m_redraw.remainingTime() > wait) {
        m_redraw.start(wait);
    }
}

void TrendWindow::redraw()
{
    m_sinceRedraw.start();
    if (m_answer) {
        m_figures->describe(m_feed->points());
        tellSources(); // a Box may have another name by now
        m_figures->setAnswers(m_answer->request, m_answer->curves);
        m_answer.reset();
    }
    m_figures->setScreen(m_control->view().range());
    m_plot->setCurves(m_figures->curves());
    m_plot->setView(m_control->view());
    m_plot->replot();
    m_table->showColumns(m_values->markers().isAnySet(), m_figures->hasSkipped());
    m_values->showReadout();
}

bool TrendWindow::canFollow() const
{
    return m_figures->rowCount() > 0 && m_feed->isGrowing();
}

void TrendWindow::showTools()
{
    const TimeView &view = m_control->view();
    const bool hasCurves = m_figures->rowCount() > 0;
    m_tools->showSpan(view.span());
    m_tools->button(Tool::Follow)->setChecked(view.isFollowing());
    m_tools->button(Tool::Follow)->setEnabled(canFollow());
    m_tools->button(Tool::Back)->setEnabled(view.canGoBack());
    m_tools->button(Tool::Markers)->setChecked(m_marks->markers().isAnySet());
    m_tools->showRecording(!m_recording->text().isEmpty());
    m_tools->button(Tool::Record)->setEnabled(hasCurves && !m_feed->isRecorded());
    for (const Tool tool :
         {Tool::ZoomIn, Tool::ZoomOut, Tool::Markers, Tool::Copy, Tool::SavePicture, Tool::SaveValues}) {
        m_tools->button(tool)->setEnabled(hasCurves);
    }
}

void TrendWindow::showTitle()
{
    QStringList standards;
    for (const Curve &curve : m_figures->curves()) {
        if (!standards.contains(curve.point.id.standard)) {
            standards.append(curve.point.id.standard);
        }
    }
    setWindowTitle(standards.isEmpty() ? tr("Trend")
                                       : tr("Trend: %1").arg(standards.join(QStringLiteral(", "))));
}

void TrendWindow::tellSources()
{
    m_sources->setText(m_feed->sources(m_feed->ids()));
    m_sources->setVisible(!m_sources->text().isEmpty());
}

void TrendWindow::tellClock()
{
    m_note->tellAhead(m_feed->isGrowing() ? m_feed->clock().ahead : 0);
}

void TrendWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    fitTable();
    m_tick.start(tick, this);
    followPresent();
    ask();
}

void TrendWindow::hideEvent(QHideEvent *event)
{
    m_tick.stop();
    QWidget::hideEvent(event);
}

void TrendWindow::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_tick.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    tellClock();
    if (m_tools->button(Tool::Follow)->isEnabled() != canFollow()) {
        showTools();
    }
    if (m_control->view().isFollowing() && !m_feed->isGrowing()) {
        m_control->toggleFollowing();
    }
    if (m_feed->isBusy()) {
        return; // each question would take the place of the one before: none would be answered
    }
    if (m_hasGrown || isPresentSeen()) {
        followPresent(); // for when it is followed again, too
        if (!m_control->view().isFollowing()) {
            ask();
        }
    }
    m_hasGrown = false;
}

// Whether another picture would show that time has gone on. A paused one does not move, but what has become
// late since is a gap at its end. What would move it by less than a pixel waits.
bool TrendWindow::isPresentSeen() const
{
    const TimeView &view = m_control->view();
    if (!m_feed->isGrowing() || (!view.isFollowing() && view.range().to < m_feed->extent().to)) {
        return false;
    }
    const qint64 shown = view.isFollowing() ? view.range().to : m_feed->askedAt();
    return m_feed->present() - shown >= view.span() / m_plot->columns();
}

bool TrendWindow::takes(const QDropEvent &drop) const
{
    const QObject *from = sourceOf(drop);
    return from != m_table && qobject_cast<const QTableView *>(from);
}

void TrendWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (takes(*event)) {
        event->acceptProposedAction();
    }
}

void TrendWindow::dropEvent(QDropEvent *event)
{
    if (takes(*event)) {
        event->acceptProposedAction();
        emit dropped(sourceOf(*event));
    }
}

bool TrendWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        ask();
    }
    return QWidget::eventFilter(watched, event);
}

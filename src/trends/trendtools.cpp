#include "trends/trendtools.h"

#include "trends/timeview.h"
#include "widgets/combobox.h"
#include "widgets/svgicon.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace {

using Tool = TrendTools::Tool;

enum Look { Icon, Text, Toggle, TextToggle };

struct Row {
    Tool tool;
    const char *name;
    const char *icon;
    Look look;
    int space; // pixels before it
    const char *text;
    const char *toolTip;
};
constexpr int wide = 12;
constexpr Row rows[] = {
    {Tool::Follow, "follow", "follow", TextToggle, 0, QT_TRANSLATE_NOOP("TrendTools", "Follow"),
     QT_TRANSLATE_NOOP("TrendTools", "Follows the present, or pauses (Space)")},
    {Tool::Back, "back", "back", Icon, wide, QT_TRANSLATE_NOOP("TrendTools", "Back"),
     QT_TRANSLATE_NOOP("TrendTools", "Back to what was shown before (Esc)")},
    {Tool::ZoomIn, "zoomIn", "zoom-in", Icon, 0, QT_TRANSLATE_NOOP("TrendTools", "Zoom In"),
     QT_TRANSLATE_NOOP("TrendTools", "Shows less time (+)")},
    {Tool::ZoomOut, "zoomOut", "zoom-out", Icon, 0, QT_TRANSLATE_NOOP("TrendTools", "Zoom Out"),
     QT_TRANSLATE_NOOP("TrendTools", "Shows more time (-)")},
    {Tool::Markers, "markers", "markers", Toggle, 0, QT_TRANSLATE_NOOP("TrendTools", "Markers"),
     QT_TRANSLATE_NOOP("TrendTools", "Two markers, A and B, with their differences (M)")},
    {Tool::Add, "add", "add", Text, wide, QT_TRANSLATE_NOOP("TrendTools", "Add..."),
     QT_TRANSLATE_NOOP("TrendTools", "Adds points to this trend (Insert)")},
    {Tool::Record, "record", "record", TextToggle, 0, QT_TRANSLATE_NOOP("TrendTools", "Record"),
     QT_TRANSLATE_NOOP("TrendTools", "Records the points of this trend, or stops that (Ctrl+R)")},
    {Tool::Open, "open", "Load Project", Text, 0, QT_TRANSLATE_NOOP("TrendTools", "Open..."),
     QT_TRANSLATE_NOOP("TrendTools", "Opens a recording (Ctrl+O)")},
    {Tool::Copy, "copyTrend", "copy", Icon, wide, QT_TRANSLATE_NOOP("TrendTools", "Copy"),
     QT_TRANSLATE_NOOP("TrendTools", "Copies the picture, and the figures as text (Ctrl+Shift+C)")},
    {Tool::SavePicture, "savePicture", "photo", Icon, 0, QT_TRANSLATE_NOOP("TrendTools", "Save Picture"),
     QT_TRANSLATE_NOOP("TrendTools", "Saves the trend as a picture (Ctrl+S)")},
    {Tool::SaveValues, "saveValues", "write", Icon, 0, QT_TRANSLATE_NOOP("TrendTools", "Save Values"),
     QT_TRANSLATE_NOOP("TrendTools", "Saves the values on screen as CSV (Ctrl+E)")},
};

QIcon iconOf(const char *name)
{
    return svgIcon(QStringLiteral(":/adsdemo/images/%1.svg").arg(QLatin1String(name)));
}

} // namespace

TrendTools::TrendTools(QWidget *parent)
    : QWidget(parent)
    , m_spans(new ComboBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    addSpans();
    addButtons();
    layout->addStretch();
}

void TrendTools::addSpans()
{
    m_spans->setObjectName(QStringLiteral("span"));
    m_spans->setToolTip(tr("How much time is shown (1 to 9 and 0 in the plot)"));
    const auto spans = TimeView::spans();
    for (const qint64 span : spans) {
        m_spans->addItem(span < TimeView::hour ? tr("%1 min").arg(span / TimeView::minute)
                                               : tr("%1 h").arg(span / TimeView::hour),
                         span);
    }
    connect(m_spans, qOverload<int>(&QComboBox::activated), this,
            [this](int index) { emit spanChosen(m_spans->itemData(index).toLongLong()); });
    auto *label = new QLabel(tr("S&pan:"), this);
    label->setBuddy(m_spans);
    layout()->addWidget(label);
    layout()->addWidget(m_spans);
}

void TrendTools::addButtons()
{
    auto *row = qobject_cast<QHBoxLayout *>(layout());
    row->addSpacing(wide);
    for (const Row &tool : rows) {
        auto *button = new QToolButton(this);
        button->setObjectName(QLatin1String(tool.name));
        button->setIcon(iconOf(tool.icon));
        button->setText(tr(tool.text));
        button->setToolTip(tr(tool.toolTip));
        button->setAccessibleName(button->text().remove(QStringLiteral("...")));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setIconSize(QSize(20, 20));
        button->setCheckable(tool.look == Toggle || tool.look == TextToggle);
        button->setToolButtonStyle(tool.look == Text || tool.look == TextToggle ? Qt::ToolButtonTextBesideIcon
                                                                                : Qt::ToolButtonIconOnly);
        connect(button, &QToolButton::clicked, this, [this, which = tool.tool] { emit used(which); });
        row->addSpacing(tool.space);
        row->addWidget(button);
        m_buttons.insert(tool.tool, button);
    }
}

void TrendTools::showRecording(bool on)
{
    QToolButton *record = button(Tool::Record);
    const QString text = on ? tr("Stop Recording") : tr("Record");
    if (record->text() != text) {
        record->setIcon(iconOf(on ? "stop" : "record"));
        record->setText(text);
        record->setAccessibleName(text);
    }
    record->setChecked(on);
}

void TrendTools::showSpan(qint64 span)
{
    const int place = m_spans->findData(span);
    m_spans->setCurrentIndex(place);
    const auto text = [](qint64 seconds) {
        if (seconds < 120) {
            return tr("%1 s").arg(seconds);
        }
        return seconds < 3 * TimeView::hour / TimeView::second
            ? tr("%1 min").arg(qRound(double(seconds) / 60))
            : tr("%1 h").arg(qRound(double(seconds) / 3600));
    };
    m_spans->setPlaceholderText(text(qMax<qint64>(1, span / TimeView::second)));
}

#include "trendexhibit.h"

#include "fakesource.h"
#include "trends/pointpicker.h"
#include "trends/trendmarks.h"
#include "trends/trendwindow.h"

#include <QComboBox>
#include <QDateTime>

namespace {

const qint64 start = QDateTime(QDate(2026, 11, 21), QTime(12, 0)).toMSecsSinceEpoch();
constexpr int count = 600; // samples of a point, a second apart

QVector<Sample> wave(double middle, double height, double period)
{
    QVector<Sample> samples;
    for (int second = 0; second < count; ++second) {
        Sample sample{start + second * 1000, 0, SampleState::Valid, QString()};
        sample.number =
            middle + height * std::sin(second * 6.2832 / period) + height / 30 * (second * 7919 % 7 - 3);
        samples.append(sample);
    }
    return samples;
}

void breakAt(QVector<Sample> &samples, int from, int to, SampleState why)
{
    for (int second = from; second < to; ++second) {
        samples[second].state = why;
        samples[second].number = FakeSource::noNumber;
    }
}

void fill(FakeSource *source)
{
    QVector<Sample> first = wave(230, 3, 180);
    QVector<Sample> second = wave(228, 2, 240);
    QVector<Sample> factor = wave(0.9, 0.05, 300);
    breakAt(first, 120, 180, SampleState::NotValid);
    breakAt(second, 400, 401, SampleState::NoNumber);
    for (auto *samples : {&first, &second, &factor}) {
        breakAt(*samples, 480, 520, SampleState::NoReport);
    }
    QVector<Sample> closed;
    for (const int at : {0, 90, 200, 205, 450, 599}) {
        closed.append({start + at * 1000, double(closed.size() % 2), SampleState::Valid, QString()});
    }
    QVector<Sample> state;
    const struct {
        int second;
        const char *text;
    } events[] = {{20, "Starting"},
                  {95, "Running"},
                  {300, "Running on the second feeder since the first one is out"},
                  {360, "Running"}};
    for (const auto &event : events) {
        state.append({start + event.second * 1000, FakeSource::noNumber, SampleState::Valid,
                      QString::fromLatin1(event.text)});
    }
    source->add("Voltage A", "float", first);
    source->add("Voltage B", "float", second);
    source->add("Power factor", "float", factor, "Tariff meter");
    source->add("Breaker closed", "bool", closed);
    source->add("State", "string", state);
}

TrendWindow *window()
{
    auto *source = new FakeSource;
    auto *window = new TrendWindow(source);
    source->setParent(window);
    return window;
}

} // namespace

QWidget *TrendExhibit::full()
{
    TrendWindow *made = window();
    fill(static_cast<FakeSource *>(made->source()));
    made->addPoints(made->source()->points());
    made->setRecordingLine("/home/engineer/riverside.sqlite · 12:00:00 · 3,000 · 1.2 MB");
    auto *marks = made->findChild<TrendMarks *>();
    marks->setMarker(0, start + 60000);
    marks->setMarker(1, start + 430000);
    marks->setCursor(start + 250500);
    made->findChild<QComboBox *>("span")->setFocus(); // where the Tab key begins; else in the plot
    return made;
}

QWidget *TrendExhibit::empty()
{
    return window();
}

QWidget *TrendExhibit::points()
{
    FakeSource source;
    fill(&source);
    return new PointPicker(source.points(), nullptr);
}

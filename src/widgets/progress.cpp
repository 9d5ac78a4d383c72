#include "widgets/progress.h"

#include <QProgressBar>

namespace {

constexpr int interval = 50; // milliseconds between two moves of the bar

} // namespace

Progress::Progress(QWidget *widget, QString text, int steps)
    : m_outer(outermost)
    , m_outerDone(m_outer ? m_outer->m_done : 0)
    , m_widget(widget)
    , m_text(std::move(text))
    , m_steps(steps)
{
    if (!m_outer) {
        outermost = this;
    }
    m_clock.start();
}

Progress::~Progress()
{
    if (!m_outer) {
        outermost = nullptr;
    }
}

void Progress::advance(int done)
{
    if (m_outer) {
        m_outer->advance(m_outerDone + done);
        return;
    }
    m_done = done;
    if (m_clock.elapsed() < m_nextMove) {
        return;
    }
    m_nextMove = m_clock.elapsed() + interval;
    if (m_bar) {
        m_bar->setValue(done); // paints at once
    } else {
        show(done);
    }
}

void Progress::show(int done)
{
    QWidget *window = m_widget->window();
    m_bar = std::make_unique<QProgressBar>(window);
    m_bar->setRange(0, m_steps);
    m_bar->setFormat(m_text + QStringLiteral(" %p%"));
    m_bar->setAlignment(Qt::AlignCenter);
    m_bar->setValue(done);
    m_bar->resize(window->width() / 2, m_bar->sizeHint().height());
    m_bar->move(window->rect().center() - m_bar->rect().center());
    m_bar->show();
    m_bar->repaint();
}

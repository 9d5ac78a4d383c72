#include "boxes/linkline.h"

#include "log/timetext.h"

#include <QLineEdit>

LinkLine::LinkLine(const QLineEdit *field, QWidget *parent)
    : OutcomeLine(parent)
    , m_field(field)
{
    keepRoom(2);
    connect(field, &QLineEdit::textChanged, this, &LinkLine::refresh);
}

void LinkLine::begin(const QString &address)
{
    m_state = State::Up;
    m_address = address;
    m_lastAnswer.clear();
    refresh();
}

void LinkLine::noteAnswer()
{
    m_state = State::Up;
    m_lastAnswer = timeText();
    refresh();
}

void LinkLine::noteSilence()
{
    if (m_state == State::Up) {
        m_state = State::Silent;
        refresh();
    }
}

void LinkLine::end()
{
    if (m_state != State::None) {
        m_state = State::Ended;
        refresh();
    }
}

void LinkLine::refresh()
{
    if (m_state == State::None) {
        return;
    }
    QStringList sentences{sentence()};
    const bool isElsewhere = m_field->text() != m_address;
    if (isElsewhere) {
        sentences.append(tr("The address above is ANOTHER one."));
    }
    showLine(sentences.join(QLatin1Char(' ')), isElsewhere || m_state != State::Up);
}

QString LinkLine::sentence() const
{
    if (m_address.isEmpty()) {
        return tr("Nothing was connected: the address was empty.");
    }
    const bool isKnown = !m_lastAnswer.isEmpty();
    switch (m_state) {
    case State::None:
    case State::Up:
        break;
    case State::Silent:
        return isKnown ? tr("%1 has NOT told its program version since %2.").arg(m_address, m_lastAnswer)
                       : tr("%1 has NOT told its program version.").arg(m_address);
    case State::Ended:
        return isKnown
            ? tr("NO link to %1. It told its program version last at %2.").arg(m_address, m_lastAnswer)
            : tr("NO link to %1. It has not told its program version.").arg(m_address);
    }
    return isKnown ? tr("%1 told its program version last at %2.").arg(m_address, m_lastAnswer)
                   : tr("%1 has not told its program version yet.").arg(m_address);
}

#include "boxes/linkline.h"

#include "log/timetext.h"

#include <QLineEdit>

LinkLine::LinkLine(const QLineEdit *field, QWidget *parent)
    : OutcomeLine(parent)
    , m_field(field)
{
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
        sentences.append(tr("The address above is another one: Connect goes there."));
    }
    showLine(sentences.join(QLatin1Char(' ')), isElsewhere || m_state != State::Up);
}

QString LinkLine::sentence() const
{
    if (m_address.isEmpty()) {
        return tr("There is no address to connect to.");
    }
    if (m_lastAnswer.isEmpty()) {
        return m_state == State::Ended
            ? tr("The link to %1 has ended, without an answer. Its program version is not known.")
                  .arg(m_address)
            : tr("%1 has not answered yet. Its program version is not known.").arg(m_address);
    }
    switch (m_state) {
    case State::None:
    case State::Up:
        break;
    case State::Silent:
        return tr("%1 DOES NOT ANSWER. Its last answer, with the program version, came at %2.")
            .arg(m_address, m_lastAnswer);
    case State::Ended:
        return tr("The link to %1 has ended. Its last answer, with the program version, came at %2.")
            .arg(m_address, m_lastAnswer);
    }
    return tr("%1 answered last at %2.").arg(m_address, m_lastAnswer);
}

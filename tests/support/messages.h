#pragma once

#include "modalwatch.h"

#include <QList>
#include <QMessageBox>
#include <QStringList>

// Answers message boxes while it lives and records what they told. One that was not expected fails the test.
class Messages : public ModalAnswerer
{
public:
    // The next message that nobody answers yet gets this button.
    void expect(QMessageBox::StandardButton button = QMessageBox::Ok);
    // From now on unexpected messages are closed and told, and fail nothing.
    void allowOthers() { m_allowsOthers = true; }

    // "title|text" of each message that came, in order.
    QStringList told() const { return m_told; }
    // Expectations that no message has met yet.
    int pending() const { return m_expected.size(); }

    bool isFor(const QWidget *modal) const override;
    bool answer(QWidget *modal) override;

private:
    QList<QMessageBox::StandardButton> m_expected;
    QStringList m_told;
    bool m_allowsOthers = false;
};

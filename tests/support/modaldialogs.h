#pragma once

#include "modalwatch.h"

#include <QList>
#include <QStringList>

#include <functional>

// Drives modal dialogs and menus while it lives: each that opens gets the next step, run in its own event
// loop once it stands. Message boxes are left to Messages. A step has to end its dialog; one that opens
// without a step, or outlives it, fails the test.
class ModalDialogs : public ModalAnswerer
{
public:
    using Step = std::function<void(QWidget *dialog)>;

    void expect(Step step);
    // From now on dialogs without a step are closed and fail nothing.
    void allowOthers() { m_allowsOthers = true; }

    // "<class>|<window title>" of each that came without a step.
    QStringList others() const { return m_others; }
    // Steps that have met no dialog yet.
    int pending() const { return m_steps.size(); }

    bool isFor(const QWidget *modal) const override;
    bool answer(QWidget *modal) override;

private:
    QList<Step> m_steps;
    QStringList m_others;
    bool m_allowsOthers = false;
};

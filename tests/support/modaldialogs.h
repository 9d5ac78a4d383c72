#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>

class QWidget;

// Drives modal dialogs and menus while it lives: each that opens gets the next step, run in its own event
// loop once it stands. Message boxes are left to MessageBoxes. A step has to end its dialog; one that opens
// without a step, or outlives it, is closed and remembered: end a test with QCOMPARE(dialogs.unexpected(),
// QStringList()).
class ModalDialogs : public QObject
{
    Q_OBJECT
public:
    using Step = std::function<void(QWidget *dialog)>;

    explicit ModalDialogs(QObject *parent = nullptr);
    ~ModalDialogs() override;

    void expect(Step step);

    // "<class>|<window title>" of each that came without a step or outlived it.
    QStringList unexpected() const { return m_unexpected; }
    // Steps that have met no dialog yet.
    int pending() const { return m_steps.size(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void drive(QWidget *dialog);

    QList<Step> m_steps;
    QStringList m_unexpected;
};

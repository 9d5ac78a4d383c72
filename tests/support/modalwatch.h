#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QWidget;

// One who answers modal messages or dialogs while it lives: Messages and ModalDialogs.
class ModalAnswerer
{
public:
    ModalAnswerer();
    virtual ~ModalAnswerer();
    ModalAnswerer(const ModalAnswerer &) = delete;
    ModalAnswerer &operator=(const ModalAnswerer &) = delete;

    virtual bool isFor(const QWidget *modal) const = 0;
    // Answers what stands on the screen; false for something that was not expected.
    virtual bool answer(QWidget *modal) = 0;
};

// Each message, modal dialog and menu that still stands after one round of events goes to the answerer that
// came last. What nobody expected is closed and fails the running test. Every test program with widgets has
// this watch.
class ModalWatch : public QObject
{
    Q_OBJECT
public:
    explicit ModalWatch(QObject *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void meet(QWidget *modal);
};

// While one lives, messages and dialogs are left to the test itself.
class UnwatchedModals
{
public:
    UnwatchedModals();
    ~UnwatchedModals();
    UnwatchedModals(const UnwatchedModals &) = delete;
    UnwatchedModals &operator=(const UnwatchedModals &) = delete;
};

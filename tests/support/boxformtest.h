#pragma once

#include "boxes/boxeditdialog.h"
#include "fakebox.h"
#include "formtest.h"

#include <QJsonObject>
#include <QPointer>

#include <functional>

// One row for each input of a Box form: its name, its role, and a text of its own for it.
struct BoxInput {
    const char *name;
    int role;
    const char *text;
};
const QVector<BoxInput> &boxInputs();

// The item's data under the roles of the inputs, the name among them.
QMap<int, QVariant> inputRolesOf(const QStandardItem &item);

// The frame of a JSON answer.
QByteArray jsonAnswer(const QByteArray &text);
// The JSON requests among the frames that a session brought, in order.
QList<QJsonObject> requestsIn(const QByteArray &stream);

// What the tests of the Box form share: a Box that they speak for, and an item full of values. Each program
// has a Box address of its own.
class BoxFormTest : public FormTest
{
protected:
    explicit BoxFormTest(QString boxAddress);

    void init() override;
    void cleanup() override;
    void prepare(QStandardItem *item) const override;

    // Opens m_form on m_item; it connects to m_box.
    void open();
    template <typename Widget> Widget *find(const char *name) const
    {
        return FormTest::find<Widget>(*m_form, name);
    }
    void click(const char *button) const { FormTest::click(*m_form, button); }
    // What an input shows; of a pair of radio buttons "on", "off" or "neither".
    QString shown(const char *name) const;
    // What all inputs show, under their roles.
    QMap<int, QVariant> shownRoles() const;
    QString status() const;
    QString boxAddress() const { return m_boxAddress; }
    // What m_item begins with: the text of each input.
    QMap<int, QVariant> fullRoles() const;
    // Waits until the last session has said its first heartbeat.
    bool connected() const;
    // Sends to the form on the last connection.
    void answer(const QByteArray &bytes) const;
    // Runs the act in the loop of the next message box, which nobody else answers, then leaves the box.
    void actBelowTheNextMessage(std::function<void()> act);
    // Takes the address in the next host address dialog, whether or not it offers it.
    void chooseHostAddress(const QString &address);

    std::unique_ptr<FakeBox> m_box;
    std::unique_ptr<UnwatchedModals> m_unwatched; // below a message that the test leaves itself
    QPointer<BoxEditDialog> m_form;

private:
    QString m_boxAddress;
};

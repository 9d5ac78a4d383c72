#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>

// Answers modal message boxes while it lives and records what they told. A box that was not expected is
// closed and remembered as unexpected; end a test with QCOMPARE(boxes.unexpected(), QStringList()).
class MessageBoxes : public QObject
{
    Q_OBJECT
public:
    explicit MessageBoxes(QObject *parent = nullptr);
    ~MessageBoxes() override;

    // The next box that nobody answers yet gets this button.
    void expect(QMessageBox::StandardButton button = QMessageBox::Ok);

    // "title|text" of each box that came, in order.
    QStringList told() const { return m_told; }
    // The boxes that came without an expectation.
    QStringList unexpected() const { return m_unexpected; }
    // Expectations that no box has met yet.
    int pending() const { return m_expected.size(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QMessageBox *box);

    QList<QMessageBox::StandardButton> m_expected;
    QStringList m_told;
    QStringList m_unexpected;
};

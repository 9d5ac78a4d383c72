#include "parametertable/listcell.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>

void ListCell::showPopup()
{
    m_typed.clear(); // of the blank, too, that may have opened the list
    QComboBox::showPopup();
    view()->installEventFilter(this);
}

void ListCell::keyPressEvent(QKeyEvent *event)
{
    const int entry = entryTyped(event);
    if (entry < 0) {
        QComboBox::keyPressEvent(event);
    } else {
        setCurrentIndex(entry);
    }
}

bool ListCell::eventFilter(QObject *watched, QEvent *event)
{
    const int entry = event->type() == QEvent::KeyPress ? entryTyped(static_cast<QKeyEvent *>(event)) : -1;
    if (entry < 0) {
        return QComboBox::eventFilter(watched, event);
    }
    view()->setCurrentIndex(model()->index(entry, modelColumn(), rootModelIndex()));
    return true;
}

int ListCell::entryTyped(const QKeyEvent *event)
{
    const QString text = event->text();
    const bool isCommand = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (text.isEmpty() || !text.at(0).isPrint() || isCommand) {
        return -1;
    }
    if (!m_sinceKey.isValid() || m_sinceKey.elapsed() > QApplication::keyboardInputInterval()) {
        m_typed.clear();
    }
    m_sinceKey.start();
    if (m_typed != text) { // a key that is pressed again begins anew
        m_typed += text;
    }
    return findText(m_typed, Qt::MatchFixedString);
}

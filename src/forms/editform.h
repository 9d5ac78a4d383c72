#pragma once

#include <QDialog>

// Base of the forms that live in a dock tab: a QDialog for its signals, never exec()ed. Closing the tab is
// for whoever opened it, who hears rejected() of "Cancel". Enter presses no button and Escape does not
// reject, since either would act on a whole tab of unsaved input by one key.
class EditForm : public QDialog
{
    Q_OBJECT
public:
    explicit EditForm(QWidget *parent = nullptr);

public slots:
    // Keeps the wheel from each list that the form is installed on as a filter, whether it has the focus or
    // not: the wheel scrolls the form or its table. May be called by name.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

#pragma once

#include <QDialog>

// Base of the forms that live in a dock tab: a QDialog for its signals, never exec()ed. Enter presses no
// button and Escape does not reject, since either would act on a whole tab of unsaved input by one key.
class EditForm : public QDialog
{
    Q_OBJECT
public:
    explicit EditForm(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

#pragma once

#include "document/projectcheck.h"

#include <QDialog>

class QLabel;
class QListWidget;

// The window with the remarks on a project. It stands beside the others, so that the remarks can be worked
// off one by one.
class RemarksDialog : public QDialog
{
    Q_OBJECT
public:
    explicit RemarksDialog(QWidget *parent);

    void setRemarks(const QString &project, const QVector<ProjectCheck::Remark> &remarks);

signals:
    // The user wants to see what the remark of this number, from 0, is about.
    void chosen(int remark);

private:
    QLabel *m_hint;
    QListWidget *m_list;
};

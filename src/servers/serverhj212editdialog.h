#pragma once

#include "servers/pointtableform.h"

// The form of a Server of protocol "HJ212": the connection to an environmental monitoring platform, and the
// points that are reported to it, each with the factor code that the operator types.
class ServerHJ212EditDialog : public PointTableForm
{
    Q_OBJECT
public:
    // The item is not owned; a null workspace takes no messages and imports nothing.
    ServerHJ212EditDialog(QStandardItem *item, Workspace *workspace);

protected:
    void fillPoints(const QStandardItem *item) override;
    QWidget *makeCodeCell(const QString &code, QWidget *parent) override;
    QString codeOf(const QWidget *cell) const override;

private:
    void addConnection();
};

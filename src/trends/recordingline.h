#pragma once

#include <QWidget>

class QuietLine;

// One line on what is being recorded, behind a red mark. It is hidden while it is empty.
class RecordingLine : public QWidget
{
    Q_OBJECT
public:
    explicit RecordingLine(QWidget *parent = nullptr);

    QString text() const;
    void setText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QuietLine *m_line;
};

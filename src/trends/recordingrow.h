#pragma once

#include <QWidget>

class QuietLine;

// Tells beside a red mark what is recorded; hidden while there is nothing to tell.
class RecordingRow : public QWidget
{
    Q_OBJECT
public:
    explicit RecordingRow(QWidget *parent);

    void setText(const QString &text);
    bool isRecording() const;

private:
    QuietLine *m_line;
};

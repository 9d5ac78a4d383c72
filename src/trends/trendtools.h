#pragma once

#include <QMap>
#include <QWidget>

class QComboBox;
class QToolButton;

// The row of tools above a plot.
class TrendTools : public QWidget
{
    Q_OBJECT
public:
    enum class Tool {
        Follow,
        Back,
        ZoomIn,
        ZoomOut,
        Markers,
        Add,
        Record,
        Open,
        Copy,
        SavePicture,
        SaveValues,
    };

    explicit TrendTools(QWidget *parent = nullptr);

    QToolButton *button(Tool tool) const { return m_buttons.value(tool); }
    // The tool that records then stops that.
    void showRecording(bool on);
    // A span in ms; one that is not in the list is shown as it is.
    void showSpan(qint64 span);

signals:
    void used(TrendTools::Tool tool);
    void spanChosen(qint64 span);

private:
    void addSpans();
    void addButtons();

    QComboBox *m_spans;
    QMap<Tool, QToolButton *> m_buttons;
};

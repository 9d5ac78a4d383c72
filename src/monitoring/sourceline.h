#pragma once

#include "boxlink/freshness.h"
#include "monitoring/livesource.h"

#include <QLabel>
#include <QMap>

// The line that tells whose live values a page shows and how old they are. Once the session has ended, the
// Box does not answer, or the next report is overdue, or the values are not those that were asked for, the
// line says so first and in bold. It has one height, so that the table below stays where it is: what has no
// room is left out, and the tool tip says it whole. Times are in ms of one clock; the line is hidden before
// the first report.
class SourceLine : public QLabel
{
    Q_OBJECT
public:
    explicit SourceLine(QWidget *parent);

    // Takes notice of a report of the source at that time, which was not to be shown.
    void noteReport(const LiveSource &source, qint64 time);
    // The page shows a report of the source from now on.
    void showReport(const LiveSource &source, qint64 now);
    // The session with the Box of the values has ended, until the next report. Values without a Box only age.
    void endSession() { setLink(Link::Ended); }
    // Whether that Box answers. It does with each report, and nothing is known of one whose session has
    // ended.
    void setAnswering(bool answers);
    // The project of the values shown has this name now.
    void setProject(const QString &name) { m_project = name; }
    // The project whose values the user asked for last, where those shown are another's, or empty.
    void setWanted(const QString &project) { m_wanted = project; }
    // Brings the line up to the time.
    void refresh(qint64 now);

    // Whose values are shown.
    const LiveSource &source() const { return m_shown; }
    // What its project is called now; the source has the name of the last report.
    const QString &project() const { return m_project; }
    bool hasReport() const { return m_freshness.value(m_shown).hasReport(); }
    // Whether the line says that the values are out of date.
    bool isOutOfDate() const { return m_outOfDate; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Link { Up, Silent, Ended };

    void setLink(Link link);

    LiveSource m_shown;
    QString m_project;
    QString m_wanted;
    QMap<LiveSource, Freshness> m_freshness; // each may report more or less often
    Link m_link = Link::Up;                  // with the Box, since the last report
    bool m_outOfDate = false;
};

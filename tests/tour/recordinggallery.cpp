#include "recordinggallery.h"

#include "monitoring/monitoringpage.h"
#include "trends/livetools.h"
#include "trends/recordingdialog.h"

#include <QComboBox>
#include <QLineEdit>

using Place = Exhibit::Place;

namespace {

QVariantMap row(const char *name, const char *value, const char *valid)
{
    return {{"name", name}, {"addr", "40001"}, {"dataType", "float"}, {"value", value}, {"valid", valid}};
}

QWidget *recordedPage(GalleryStock &)
{
    auto *page = new MonitoringPage;
    page->setWindowTitle("Protection relay");
    auto *tools = new LiveTools(page, [] { return QVector<TrendWindow *>(); });
    page->showReport(
        {row("Voltage A", "230.1", "1"), row("Voltage B", "0", "0"), row("Current", "12.5", "1")},
        "2026-11-21 12:00:00", {"North feeder", "Gateway north", "192.168.1.80"});
    tools->setRecording(
        "Recording Protection relay · since 2026-11-21 08:00:00 · samples: 43,200 · 1.2 MiB · "
        "/home/engineer/North feeder Protection relay 2026-11-21.sqlite",
        false);
    page->resize(760, 240);
    return page;
}

QWidget *recordFile(GalleryStock &)
{
    return new RecordingDialog(RecordingDialog::Purpose::Record, "Protection relay",
                               "North feeder Protection relay 2026-11-21", nullptr);
}

QWidget *recordServer(GalleryStock &)
{
    auto *dialog =
        new RecordingDialog(RecordingDialog::Purpose::Record, "Protection relay", QString(), nullptr);
    auto *kind = dialog->findChild<QComboBox *>("kind");
    kind->setCurrentIndex(kind->count() - 1);
    dialog->findChild<QLineEdit *>("server")->setText("postgresql://marlin@192.168.1.10:5432/plant");
    dialog->findChild<QLineEdit *>("password")->setText("secret");
    return dialog;
}

QWidget *openRecording(GalleryStock &)
{
    auto *dialog = new RecordingDialog(RecordingDialog::Purpose::Open, QString(), QString(), nullptr);
    dialog->findChild<QLineEdit *>("file")->setText("/home/engineer/Riverside 2026-11-21.sqlite");
    return dialog;
}

} // namespace

QVector<Exhibit> recordingExhibits()
{
    return {
        {"monitoring-recorded", Place::Window, recordedPage},
        {"record-file", Place::Window, recordFile},
        {"record-server", Place::Window, recordServer},
        {"open-recording", Place::Window, openRecording},
    };
}

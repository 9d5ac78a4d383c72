#include "boxes/boxcommonpage.h"

#include "boxes/boxeditdialog.h"
#include "boxes/linkline.h"
#include "boxes/pushoutcome.h"
#include "boxes/pushpreview.h"
#include "boxes/requestline.h"
#include "forms/formpage.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct CommonButton {
    const char *name;
    const char *text; // source text, or null for a small button that has a tool tip alone
    const char *icon;
    void (BoxEditDialog::*slot)();
    const char *toolTip = nullptr; // source text
};
const CommonButton ofSession[] = {
    {"connectButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Connect"), "Connect.svg",
     &BoxEditDialog::connectToServer},
    {"disconnectButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Disconnect"), "Disconnect.svg",
     &BoxEditDialog::disconnectFromServer},
    {"changeHostButton", nullptr, "change_host.svg", &BoxEditDialog::showChangeHostAddressDialog,
     QT_TRANSLATE_NOOP("BoxEditDialog", "Select Host Address")},
};
const CommonButton ofTransfers[] = {
    {"updateProjectButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Update project"), "Update project.svg",
     &BoxEditDialog::updateProject},
    {"updateProgramButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Update program"), "Update project.svg",
     &BoxEditDialog::updateProgram},
};
const CommonButton ofReboot[] = {
    {"rebootButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Reboot Device"), "Reboot Device.svg",
     &BoxEditDialog::rebootDevice},
};

template <class Widget> Widget *named(const char *name, Widget *widget)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

template <class Buttons> QHBoxLayout *makeRow(const Buttons &buttons, BoxEditDialog *form, QWidget *page)
{
    auto *row = new QHBoxLayout;
    for (const CommonButton &each : buttons) {
        QPushButton *button =
            FormPage::button(each.text ? BoxEditDialog::tr(each.text) : QString(),
                             QLatin1String(":/adsdemo/images/") + QLatin1String(each.icon), page);
        button->setObjectName(QLatin1String(each.name));
        if (each.toolTip) {
            button->setFixedSize(20, 25);
            button->setToolTip(BoxEditDialog::tr(each.toolTip));
            button->setAccessibleName(button->toolTip());
        }
        QObject::connect(button, &QPushButton::clicked, form, each.slot);
        row->addWidget(button);
    }
    return row;
}

} // namespace

BoxCommonPage BoxCommonPage::build(BoxEditDialog *form, Workspace *workspace, const QLineEdit *address)
{
    auto *widget = new QWidget(form);
    auto *layout = new QFormLayout(widget);
    const QString unknownVersion = BoxEditDialog::tr("Program version: ") + QLatin1String("0.0.0");
    BoxCommonPage page{
        widget,
        named("statusLabel", new QLabel(BoxEditDialog::tr("Connection status: connecting.."), widget)),
        named("versionLabel", new QLabel(unknownVersion, widget)),
        named("linkLine", new LinkLine(address, widget)),
        new PushPreview(workspace, address, widget),
        named("progressBar", new QProgressBar(widget)),
        named("projectOutcome", new PushOutcome(widget)),
        named("programOutcome", new PushOutcome(widget)),
        named("rebootLine", new RequestLine(widget)),
    };
    page.version->setTextFormat(Qt::PlainText); // the Box's own words
    page.progress->setRange(0, 100);
    page.progress->setValue(0);
    page.reboot->hide();

    layout->addRow(makeRow(ofSession, form, widget));
    layout->addRow(page.status);
    layout->addRow(page.version);
    auto *lines = new QWidget(widget);
    auto *column = new QVBoxLayout(lines);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSizeConstraint(QLayout::SetMinimumSize); // or a low page takes of it
    column->addWidget(page.link);
    column->addWidget(page.preview);
    layout->addRow(lines);
    layout->addRow(makeRow(ofTransfers, form, widget));
    layout->addRow(BoxEditDialog::tr("Progress:"), page.progress);
    auto *outcomes = new QVBoxLayout; // one row of the form, which both leave empty at first
    outcomes->addWidget(page.project);
    outcomes->addWidget(page.program);
    layout->addRow(outcomes);
    auto *reboot = new QVBoxLayout; // the line below the button, which so stays where it is
    reboot->addLayout(makeRow(ofReboot, form, widget));
    reboot->addWidget(page.reboot);
    reboot->addStretch(1);
    layout->addRow(reboot);
    return page;
}

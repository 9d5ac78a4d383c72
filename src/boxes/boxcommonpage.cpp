#include "boxes/boxcommonpage.h"

#include "boxes/boxeditdialog.h"
#include "boxes/pushoutcome.h"
#include "boxes/pushpreview.h"
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
    const char *text; // null for none
    const char *icon;
    void (BoxEditDialog::*slot)();
};

QPushButton *addButton(const CommonButton &entry, QHBoxLayout *row, BoxEditDialog *form, QWidget *page)
{
    QPushButton *button =
        FormPage::button(entry.text ? BoxEditDialog::tr(entry.text) : QString(),
                         QLatin1String(":/adsdemo/images/") + QLatin1String(entry.icon), page);
    button->setObjectName(QLatin1String(entry.name));
    QObject::connect(button, &QPushButton::clicked, form, entry.slot);
    row->addWidget(button);
    return button;
}

void addSessionRow(QFormLayout *layout, BoxEditDialog *form, QWidget *page)
{
    auto *row = new QHBoxLayout;
    addButton({"connectButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Connect"), "Connect.svg",
               &BoxEditDialog::connectToServer},
              row, form, page);
    addButton({"disconnectButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Disconnect"), "Disconnect.svg",
               &BoxEditDialog::disconnectFromServer},
              row, form, page);
    QPushButton *host = addButton(
        {"changeHostButton", nullptr, "change_host.svg", &BoxEditDialog::showChangeHostAddressDialog}, row,
        form, page);
    host->setFixedSize(20, 25);
    host->setToolTip(BoxEditDialog::tr("Select Host Address"));
    host->setAccessibleName(host->toolTip());
    layout->addRow(row);
}

void addTransferRow(QFormLayout *layout, BoxEditDialog *form, QWidget *page)
{
    auto *row = new QHBoxLayout;
    addButton({"updateProjectButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Update project"),
               "Update project.svg", &BoxEditDialog::updateProject},
              row, form, page);
    addButton({"updateProgramButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Update program"),
               "Update project.svg", &BoxEditDialog::updateProgram},
              row, form, page);
    layout->addRow(row);
}

void addRebootRow(QFormLayout *layout, BoxEditDialog *form, QWidget *page)
{
    auto *row = new QHBoxLayout;
    addButton({"rebootButton", QT_TRANSLATE_NOOP("BoxEditDialog", "Reboot Device"), "Reboot Device.svg",
               &BoxEditDialog::rebootDevice},
              row, form, page);
    layout->addRow(row);
}

} // namespace

BoxCommonPage BoxCommonPage::build(BoxEditDialog *form, Workspace *workspace, const QLineEdit *address)
{
    auto *widget = new QWidget(form);
    auto *layout = new QFormLayout(widget);
    BoxCommonPage page{widget,
                       new QLabel(BoxEditDialog::tr("Connection status: connecting.."), widget),
                       new QLabel(BoxEditDialog::tr("Program version: ") + QLatin1String("0.0.0"), widget),
                       new QProgressBar(widget),
                       new PushOutcome(widget),
                       new PushOutcome(widget)};
    page.version->setTextFormat(Qt::PlainText); // the Box's own words
    page.status->setObjectName(QStringLiteral("statusLabel"));
    page.version->setObjectName(QStringLiteral("versionLabel"));
    page.progress->setObjectName(QStringLiteral("progressBar"));
    page.progress->setRange(0, 100);
    page.progress->setValue(0);
    page.project->setObjectName(QStringLiteral("projectOutcome"));
    page.program->setObjectName(QStringLiteral("programOutcome"));

    addSessionRow(layout, form, widget);
    layout->addRow(page.status);
    layout->addRow(page.version);
    layout->addRow(new PushPreview(workspace, address, widget));
    addTransferRow(layout, form, widget);
    layout->addRow(BoxEditDialog::tr("Progress:"), page.progress);
    auto *outcomes = new QVBoxLayout; // one row of the form, which both leave empty at first
    outcomes->addWidget(page.project);
    outcomes->addWidget(page.program);
    layout->addRow(outcomes);
    addRebootRow(layout, form, widget);
    return page;
}

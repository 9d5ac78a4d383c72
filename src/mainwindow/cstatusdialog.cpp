#include "mainwindow/cstatusdialog.h"

#include "mainwindow/docking.h"
#include "ui_cstatusdialog.h"

using ads::CDockWidget;

CStatusDialog::CStatusDialog(ads::CDockManager *manager, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::CStatusDialogClass>())
{
    m_ui->setupUi(this);
    const QList<CDockWidget *> docks = manager->dockWidgetsMap().values();
    connect(m_ui->dockComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, docks](int index) { showDock(docks.value(index)); });
    for (const CDockWidget *dock : docks) {
        m_ui->dockComboBox->addItem(dock->windowTitle());
    }
}

CStatusDialog::~CStatusDialog() = default;

void CStatusDialog::showDock(const CDockWidget *dock)
{
    if (!dock) {
        return;
    }
    m_ui->closedCheckBox->setChecked(dock->isClosed());
    m_ui->floatingCheckBox->setChecked(dock->isFloating());
    m_ui->tabbedCheckBox->setChecked(dock->isTabbed());
    m_ui->currentTabCheckBox->setChecked(dock->isCurrentTab());

    const CDockWidget::DockWidgetFeatures features = dock->features();
    m_ui->closableCheckBox->setChecked(features.testFlag(CDockWidget::DockWidgetClosable));
    m_ui->movableCheckBox->setChecked(features.testFlag(CDockWidget::DockWidgetMovable));
    m_ui->floatableCheckBox->setChecked(features.testFlag(CDockWidget::DockWidgetFloatable));
    m_ui->deleteOnCloseCheckBox->setChecked(features.testFlag(CDockWidget::DockWidgetDeleteOnClose));
    m_ui->customCloseHandlingCheckBox->setChecked(features.testFlag(CDockWidget::CustomCloseHandling));
}

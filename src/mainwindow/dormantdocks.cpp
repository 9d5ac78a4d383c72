#include "mainwindow/dormantdocks.h"

#include "mainwindow/cimageviewer.h"
#include "mainwindow/cstatusdialog.h"
#include "mainwindow/dockfactory.h"
#include "mainwindow/docking.h"
#include "mainwindow/windowtext.h"
#include "widgets/svgicon.h"
#include "widgets/tell.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QRandomGenerator>

using ads::CDockManager;
using ads::CDockWidget;

namespace {

bool trueWhenAbsent(const QObject *object, const char *property)
{
    const QVariant value = object ? object->property(property) : QVariant();
    return !value.isValid() || value.toBool();
}

QString randomImage()
{
    static const char *const names[] = {"picture-1.png", "picture-2.png", "picture-3.png", "picture-4.png",
                                        "picture-5.png"};
    const int chosen = QRandomGenerator::global()->bounded(static_cast<int>(std::size(names)));
    return QStringLiteral(":/adsdemo/images/") + QLatin1String(names[chosen]);
}

} // namespace

DormantDocks::DormantDocks(CDockManager *manager, QWidget *window)
    : QObject(window)
    , m_manager(manager)
    , m_window(window)
{
}

CDockWidget *DormantDocks::createEditor(const QObject *trigger)
{
    if (!m_manager) {
        return nullptr;
    }
    static int counter = 0;
    CDockWidget *dock = DockFactory::makeEditor(
        m_manager, QStringLiteral("Editor %1").arg(counter++), new QPlainTextEdit,
        WindowText::tr(
            "This is an editor. If you close the editor, it will be deleted. Enter your text here."),
        svgIcon(QStringLiteral(":/adsdemo/images/edit-1.svg")));
    dock->setFeature(CDockWidget::CustomCloseHandling, true);
    dock->setFeature(CDockWidget::DockWidgetDeleteOnClose, true);
    dock->setFeature(CDockWidget::DockWidgetForceCloseWithArea, true);
    placeEditor(dock, trigger);
    m_lastEditor = dock;
    return dock;
}

void DormantDocks::placeEditor(CDockWidget *dock, const QObject *trigger)
{
    if (trueWhenAbsent(trigger, "Floating")) {
        m_manager->addDockWidgetFloating(dock);
        return;
    }
    ads::CDockAreaWidget *area = m_lastDockedEditor ? m_lastDockedEditor->dockAreaWidget() : nullptr;
    if (!area) {
        m_manager->addDockWidget(ads::TopDockWidgetArea, dock);
    } else if (trueWhenAbsent(trigger, "Tabbed")) {
        m_manager->addDockWidgetTabToArea(dock, area);
    } else {
        // Only this split shares the space out equally: the flag is the library's and counts process-wide.
        const bool equalSplit = CDockManager::testConfigFlag(CDockManager::EqualSplitOnInsertion);
        CDockManager::setConfigFlag(CDockManager::EqualSplitOnInsertion, true);
        m_manager->addDockWidget(ads::RightDockWidgetArea, dock, area);
        CDockManager::setConfigFlag(CDockManager::EqualSplitOnInsertion, equalSplit);
    }
    m_lastDockedEditor = dock;
}

void DormantDocks::createTable()
{
    if (!m_manager) {
        return;
    }
    CDockWidget *dock = DockFactory::makeTable(m_manager);
    dock->setFeature(CDockWidget::DockWidgetDeleteOnClose, true);
    m_manager->addDockWidgetFloating(dock)->resize(700, 800);
}

CDockWidget *DormantDocks::createImageViewer(const QObject *trigger)
{
    if (!m_manager) {
        return nullptr;
    }
    static int counter = 0;
    CDockWidget *dock = Docking::makeDock(m_manager, QStringLiteral("Image Viewer %1").arg(counter++));
    auto *viewer = new CImageViewer;
    viewer->loadFile(randomImage());
    dock->setWidget(viewer, CDockWidget::ForceNoScrollArea);
    dock->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/photo.svg")));
    dock->setFeature(CDockWidget::DockWidgetDeleteOnClose, true);
    dock->setFeature(CDockWidget::DockWidgetForceCloseWithArea, true);
    dock->setFeature(CDockWidget::CustomCloseHandling, true);
    dock->resize(640, 480);

    const auto *action = qobject_cast<const QAction *>(trigger);
    const QString where = action ? action->text() : QString();
    if (where == QLatin1String("Docked")) {
        m_manager->addDockWidget(ads::RightDockWidgetArea, dock);
    } else if (where == QLatin1String("Pinned")) {
        // No dock can be pinned, so this one stays open at the edge where it would be.
        m_manager->addDockWidget(ads::LeftDockWidgetArea, dock);
    } else {
        m_manager->addDockWidgetFloating(dock)->resize(640, 480);
    }
    return dock;
}

void DormantDocks::showStatusDialog()
{
    if (m_manager) {
        CStatusDialog(m_manager, m_window).exec();
    }
}

void DormantDocks::toggleTitle()
{
    if (!m_lastEditor) {
        return;
    }
    const QString suffix = QStringLiteral(" (Test)");
    const QString title = m_lastEditor->windowTitle();
    const int suffixAt = title.indexOf(suffix);
    m_lastEditor->setWindowTitle(suffixAt < 0 ? title + suffix : title.left(suffixAt));
}

void DormantDocks::closeEditor(CDockWidget *dock)
{
    if (dock) {
        const QString number = dock->objectName().section(QLatin1Char(' '), -1);
        askToClose(
            dock, WindowText::tr("Close Editor"),
            WindowText::tr("Editor %1 contains unsaved changes? Would you like to close it?").arg(number));
    }
}

void DormantDocks::closeImageViewer(CDockWidget *dock)
{
    if (dock) {
        askToClose(dock, WindowText::tr("Close Image Viewer"),
                   WindowText::tr("%1 contains unsaved changes? Would you like to close it?")
                       .arg(dock->windowTitle()));
    }
}

void DormantDocks::askToClose(CDockWidget *dock, const QString &title, const QString &text)
{
    const QPointer<CDockWidget> guarded(dock);
    if (Tell::question(m_window, title, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes
        && guarded) {
        guarded->closeDockWidget();
    }
}

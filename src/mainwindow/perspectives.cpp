#include "mainwindow/perspectives.h"

#include "mainwindow/docking.h"
#include "mainwindow/layoutfile.h"
#include "mainwindow/windowtext.h"
#include "widgets/combobox.h"
#include "widgets/svgicon.h"

#include <QAction>
#include <QInputDialog>
#include <QSettings>
#include <QSignalBlocker>
#include <QWidgetAction>

Perspectives::Perspectives(QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_names(new ComboBox)
{
    auto *create = new QAction(svgIcon(QStringLiteral(":/adsdemo/images/picture_in_picture.svg")),
                               WindowText::tr("Create Perspective"), window);
    create->setObjectName(QStringLiteral("createPerspectiveAction"));
    connect(create, &QAction::triggered, this, &Perspectives::createTriggered);

    m_names->setObjectName(QStringLiteral("perspectiveComboBox"));
    m_names->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_names->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    auto *list = new QWidgetAction(window);
    list->setObjectName(QStringLiteral("perspectiveListAction"));
    list->setDefaultWidget(m_names);
}

void Perspectives::load(ads::CDockManager *manager)
{
    m_manager = manager;
    // By the older of two signals that a choice emits: it is the one that may be emitted by name from
    // outside.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    connect(m_names, qOverload<const QString &>(&QComboBox::activated), manager,
            &ads::CDockManager::openPerspective);
    QT_WARNING_POP
    QSettings file(layoutFile, QSettings::IniFormat);
    manager->loadPerspectives(file);
    fill();
}

void Perspectives::save()
{
    if (!m_manager) {
        return;
    }
    const QString name = QInputDialog::getText(m_window, QStringLiteral("Save Perspective"),
                                               QStringLiteral("Enter unique name:"));
    if (name.isEmpty() || !m_manager) {
        return;
    }
    m_manager->addPerspective(name);
    {
        const QSignalBlocker blocker(m_names);
        fill();
        m_names->setCurrentText(name);
    }
    QSettings file(layoutFile, QSettings::IniFormat);
    m_manager->savePerspectives(file);
}

void Perspectives::fill()
{
    m_names->clear();
    m_names->addItems(m_manager->perspectiveNames());
}

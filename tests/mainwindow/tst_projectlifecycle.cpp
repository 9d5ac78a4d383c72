#include "mainwindow/projectlifecycle.h"

#include "docksundertest.h"
#include "mainwindow/editortabs.h"
#include "mainwindow/projectfiles.h"
#include "model/itemroles.h"
#include "projects/editprojectdialog.h"
#include "support/messageboxes.h"
#include "support/modaldialogs.h"
#include "support/projectdump.h"
#include "windowundertest.h"

using Window = WindowUnderTest;

class tst_ProjectLifecycle : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void newProjectHasFourFoldersAndOneService();
    void newProjectItemsHaveTheirIcons();
    void newProjectActionAsksAndCreates();
    void newProjectWritesAndOpensNothing();
    void nameOfAnOpenProjectIsRefused();
    void nameOfAFileIsRefusedThoughNoSuchProjectIsOpen();
    void fileIsTestedBeforeTheOpenProjects();
    void namesDifferByCase();
    void dialogClosesThoughTheProjectIsRefused();

    void clickOpensTheFormWithTheStoredValues();
    void secondClickRebuildsTheForm();
    void oneTabStaysHoweverOftenItIsOpenedAtOnce();
    void savedValuesGoToTheItemAlone();
    void renamedProjectIsSavedUnderItsNewNameBesideTheOldFile();
    void duplicateNameChangesNothing();
    void emptyDescriptionIsSaved();
    void emptyNameIsRefused();
    void cancelClosesTheForm();
    void formOfAClosedProjectSavesNowhere();
    void editNeedsACurrentItem();
    void projectsNeedNoMainWindow();

private:
    QString savedText(const QString &name) const
    {
        return QStringLiteral("Save Successful|JSON data saved to file:\n") + m_folder->filePath(name);
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Window> m_window;
};

void tst_ProjectLifecycle::init()
{
    QFile::remove(QStringLiteral("Settings.ini"));
    m_folder.reset(new QTemporaryDir);
    m_window.reset(new Window);
}

void tst_ProjectLifecycle::cleanup()
{
    m_window.reset();
}

void tst_ProjectLifecycle::newProjectHasFourFoldersAndOneService()
{
    m_window->handleProjectCreated(QStringLiteral("plant"), QStringLiteral("/nowhere"),
                                   QStringLiteral("text"));
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
    QCOMPARE(ProjectDump::tree(m_window->projectModel()->item(0)),
             QStringList({QStringLiteral("plant"), QStringLiteral("  +1 QString /nowhere"),
                          QStringLiteral("  +2 QString text"), QStringLiteral("    Standard"),
                          QStringLiteral("    Service"), QStringLiteral("        IEC61850"),
                          QStringLiteral("          +171 QString IEC61850"), QStringLiteral("    Box"),
                          QStringLiteral("    Data")}));
    QVERIFY(m_window->projectTree()->isExpanded(m_window->projectModel()->item(0)->index()));
}

void tst_ProjectLifecycle::newProjectItemsHaveTheirIcons()
{
    const QStandardItem *project = m_window->addProject(QStringLiteral("plant"));
    QCOMPARE(ProjectDump::iconBytes(project->icon()),
             ProjectDump::iconBytes(QStringLiteral(":/adsdemo/images/project_manage.svg")));
    const QStringList icons{QStringLiteral("standard"), QStringLiteral("Service"), QStringLiteral("Box"),
                            QStringLiteral("Data")};
    for (int row = 0; row < icons.size(); ++row) {
        QCOMPARE(ProjectDump::iconBytes(project->child(row)->icon()),
                 ProjectDump::iconBytes(QStringLiteral(":/adsdemo/images/%1.svg").arg(icons.at(row))));
    }
    QCOMPARE(ProjectDump::iconBytes(project->child(1)->child(0)->icon()),
             ProjectDump::iconBytes(QStringLiteral(":/adsdemo/images/IEC61850.svg")));
}

void tst_ProjectLifecycle::newProjectActionAsksAndCreates()
{
    ModalDialogs dialogs;
    QWidget *parent = nullptr;
    dialogs.expect([&](QWidget *dialog) {
        parent = dialog->parentWidget();
        QTest::keyClicks(Window::input<QLineEdit>(dialog, "name"), QStringLiteral("plant"));
        Window::input<QLineEdit>(dialog, "path")->setText(m_folder->path());
        QTest::keyClicks(Window::input<QTextEdit>(dialog, "description"), QStringLiteral("text"));
        Window::press(dialog, "okButton");
    });
    m_window->findChild<QAction *>(QStringLiteral("actionNew_Project"))->trigger();
    QCOMPARE(dialogs.unexpected(), QStringList());
    QCOMPARE(parent, static_cast<QWidget *>(m_window.data()));
    QCOMPARE(ProjectDump::shape(m_window->projectModel()->item(0)),
             QStringLiteral("plant(Standard() Service(IEC61850()) Box() Data())"));
    QCOMPARE(m_window->projectModel()->item(0)->data(projectPathRole).toString(), m_folder->path());
    QCOMPARE(m_window->projectModel()->item(0)->data(projectDescriptionRole).toString(),
             QStringLiteral("text"));
}

void tst_ProjectLifecycle::newProjectWritesAndOpensNothing()
{
    const QList<QStringList> areas = m_window->areas();
    m_window->addProject(QStringLiteral("plant"), m_folder->path());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
    QCOMPARE(m_window->areas(), areas);
}

void tst_ProjectLifecycle::nameOfAnOpenProjectIsRefused()
{
    m_window->addProject(QStringLiteral("plant"));
    MessageBoxes boxes;
    boxes.expect();
    m_window->handleProjectCreated(QStringLiteral("plant"), m_folder->path(), QString());
    QCOMPARE(boxes.told(),
             QStringList(QStringLiteral("Warning|A project with the same name already exists. "
                                        "Please use a different name.")));
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

void tst_ProjectLifecycle::nameOfAFileIsRefusedThoughNoSuchProjectIsOpen()
{
    QFile file(m_folder->filePath(QStringLiteral("plant.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    MessageBoxes boxes;
    boxes.expect();
    m_window->handleProjectCreated(QStringLiteral("plant"), m_folder->path(), QString());
    QCOMPARE(boxes.told(),
             QStringList(QStringLiteral("Warning|A project with the same name already exists in the selected "
                                        "directory. Please use a different name.")));
    QCOMPARE(m_window->projectModel()->rowCount(), 0);
}

void tst_ProjectLifecycle::fileIsTestedBeforeTheOpenProjects()
{
    m_window->addProject(QStringLiteral("plant"));
    QFile file(m_folder->filePath(QStringLiteral("plant.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    MessageBoxes boxes;
    boxes.expect();
    m_window->handleProjectCreated(QStringLiteral("plant"), m_folder->path(), QString());
    QVERIFY(boxes.told().value(0).contains(QStringLiteral("in the selected directory")));
    QCOMPARE(boxes.told().size(), 1);
}

void tst_ProjectLifecycle::namesDifferByCase()
{
    m_window->addProject(QStringLiteral("plant"));
    MessageBoxes boxes;
    m_window->addProject(QStringLiteral("PLANT"));
    QCOMPARE(boxes.told(), QStringList());
    QCOMPARE(m_window->projectModel()->rowCount(), 2);
}

void tst_ProjectLifecycle::dialogClosesThoughTheProjectIsRefused()
{
    m_window->addProject(QStringLiteral("plant"));
    ModalDialogs dialogs;
    MessageBoxes boxes;
    boxes.expect();
    dialogs.expect([&](QWidget *dialog) {
        Window::input<QLineEdit>(dialog, "name")->setText(QStringLiteral("plant"));
        Window::input<QLineEdit>(dialog, "path")->setText(m_folder->path());
        Window::press(dialog, "okButton");
        QVERIFY(!dialog->isVisible());
    });
    m_window->slotNewProject();
    QCOMPARE(dialogs.unexpected(), QStringList());
    QCOMPARE(boxes.told().size(), 1);
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

static QStringList shown(const QWidget *form)
{
    return {Window::input<QLineEdit>(form, "name")->text(), Window::input<QLineEdit>(form, "path")->text(),
            Window::input<QTextEdit>(form, "description")->toPlainText()};
}

static const QString editProject = QStringLiteral("Edit Project");

void tst_ProjectLifecycle::clickOpensTheFormWithTheStoredValues()
{
    const QStandardItem *project = m_window->addProject(QStringLiteral("plant"));
    m_window->click(project);
    QVERIFY(m_window->form(editProject));
    QCOMPARE(
        shown(m_window->form(editProject)),
        QStringList({QStringLiteral("plant"), QStringLiteral("/nowhere"), QStringLiteral("about plant")}));
    const ads::CDockWidget *tab = m_window->tab(editProject);
    QVERIFY(tab->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
    QVERIFY(!tab->icon().isNull());
    QVERIFY(!tab->isClosed());
}

void tst_ProjectLifecycle::secondClickRebuildsTheForm()
{
    const QStandardItem *project = m_window->addProject(QStringLiteral("plant"));
    m_window->click(project);
    const QPointer<QDialog> first = m_window->form(editProject);
    Window::input<QLineEdit>(first, "name")->setText(QStringLiteral("typed"));
    m_window->click(project);
    Window::settle();
    QVERIFY(!first);
    QCOMPARE(m_window->tabs(editProject).size(), 1);
    QCOMPARE(m_window->countOf(editProject), 1);
    QCOMPARE(shown(m_window->form(editProject)).first(), QStringLiteral("plant"));
}

void tst_ProjectLifecycle::oneTabStaysHoweverOftenItIsOpenedAtOnce()
{
    m_window->select(m_window->addProject(QStringLiteral("plant")));
    // Closed docks are deleted by the event loop, which does not run between these.
    m_window->slotEditProject();
    m_window->slotEditProject();
    m_window->slotEditProject();
    QCOMPARE(m_window->tabs(editProject).size(), 1);
    QCOMPARE(m_window->countOf(editProject), 1);
    QVERIFY(m_window->form(editProject));
    Window::settle();
    QCOMPARE(m_window->countOf(editProject), 1);
    QCOMPARE(shown(m_window->form(editProject)).first(), QStringLiteral("plant"));
    QCOMPARE(m_window->dockManager()->findDockWidget(editProject), m_window->tab(editProject));
}

void tst_ProjectLifecycle::savedValuesGoToTheItemAlone()
{
    QStandardItem *project = m_window->addProject(QStringLiteral("plant"), m_folder->path());
    m_window->projectModel()->setRowCount(2); // A row without an item is passed over.
    m_window->click(project);
    QDialog *form = m_window->form(editProject);
    Window::input<QLineEdit>(form, "name")->setText(QStringLiteral("mill"));
    Window::input<QTextEdit>(form, "description")->setPlainText(QStringLiteral("other"));
    Window::press(form, "saveButton");
    QCOMPARE(ProjectDump::tree(project).mid(0, 3),
             QStringList({QStringLiteral("mill"), QStringLiteral("  +1 QString ") + m_folder->path(),
                          QStringLiteral("  +2 QString other")}));
    QCOMPARE(m_window->messages(), QStringList(QStringLiteral("The Project 'mill' is saved successfully.")));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
    Window::settle();
    QCOMPARE(m_window->form(editProject), form);
}

void tst_ProjectLifecycle::renamedProjectIsSavedUnderItsNewNameBesideTheOldFile()
{
    m_window->click(m_window->addProject(QStringLiteral("plant"), m_folder->path()));
    MessageBoxes boxes;
    boxes.expect();
    boxes.expect();
    m_window->saveProjectFile();
    Window::input<QLineEdit>(m_window->form(editProject), "name")->setText(QStringLiteral("mill"));
    Window::press(m_window->form(editProject), "saveButton");
    m_window->saveProjectFile();
    QCOMPARE(boxes.told(),
             QStringList({savedText(QStringLiteral("plant.json")), savedText(QStringLiteral("mill.json"))}));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files),
             QStringList({QStringLiteral("mill.json"), QStringLiteral("plant.json")}));
}

void tst_ProjectLifecycle::duplicateNameChangesNothing()
{
    m_window->addProject(QStringLiteral("mill"));
    QStandardItem *project = m_window->addProject(QStringLiteral("plant"));
    const QStringList before = ProjectDump::tree(project);
    m_window->click(project);
    QDialog *form = m_window->form(editProject);
    Window::input<QLineEdit>(form, "name")->setText(QStringLiteral("mill"));
    Window::input<QTextEdit>(form, "description")->setPlainText(QStringLiteral("other"));
    MessageBoxes boxes;
    boxes.expect();
    Window::press(form, "saveButton");
    QCOMPARE(boxes.told(),
             QStringList(QStringLiteral("Warning|A project with the same name already exists. "
                                        "Please use a different name.")));
    QCOMPARE(ProjectDump::tree(project), before);
    Window::settle();
    QCOMPARE(m_window->form(editProject), form);
    QCOMPARE(shown(form),
             QStringList({QStringLiteral("mill"), QStringLiteral("/nowhere"), QStringLiteral("other")}));
    QCOMPARE(m_window->messages(), QStringList());
}

void tst_ProjectLifecycle::emptyDescriptionIsSaved()
{
    QStandardItem *project = m_window->addProject(QStringLiteral("plant"));
    m_window->click(project);
    Window::input<QTextEdit>(m_window->form(editProject), "description")->clear();
    Window::press(m_window->form(editProject), "saveButton");
    QCOMPARE(project->data(projectDescriptionRole), QVariant(QString()));
    QCOMPARE(project->text(), QStringLiteral("plant"));
}

void tst_ProjectLifecycle::emptyNameIsRefused()
{
    QStandardItem *project = m_window->addProject(QStringLiteral("plant"));
    m_window->click(project);
    Window::input<QLineEdit>(m_window->form(editProject), "name")->clear();
    MessageBoxes boxes;
    boxes.expect();
    Window::press(m_window->form(editProject), "saveButton");
    QCOMPARE(boxes.told(), QStringList(QStringLiteral("Warning|Name cannot be empty.")));
    QCOMPARE(project->text(), QStringLiteral("plant"));
}

void tst_ProjectLifecycle::cancelClosesTheForm()
{
    m_window->click(m_window->addProject(QStringLiteral("plant")));
    const QPointer<QDialog> form = m_window->form(editProject);
    const QSignalSpy closed(m_window->tab(editProject), &ads::CDockWidget::closed);
    Window::press(form, "cancelButton");
    QCOMPARE(closed.count(), 2);
    QCOMPARE(m_window->tabs(editProject).size(), 0);
    Window::settle();
    QVERIFY(!form);
    QCOMPARE(m_window->countOf(editProject), 0);
}

void tst_ProjectLifecycle::formOfAClosedProjectSavesNowhere()
{
    m_window->click(m_window->addProject(QStringLiteral("plant")));
    m_window->projectModel()->removeRow(0);
    Window::press(m_window->form(editProject), "saveButton");
    QCOMPARE(m_window->messages(), QStringList());
}

void tst_ProjectLifecycle::editNeedsACurrentItem()
{
    m_window->slotEditProject();
    QCOMPARE(m_window->tabs(editProject).size(), 0);
}

void tst_ProjectLifecycle::projectsNeedNoMainWindow()
{
    DocksUnderTest window;
    EditorTabs tabs(window.dockManager(), window.viewMenu(), nullptr);
    ProjectFiles files(nullptr, window.projectModel(), window.projectTree());
    ProjectLifecycle projects(window.projectModel(), window.projectTree(), &tabs, &files, &window);
    projects.create(QStringLiteral("plant"), QStringLiteral("/nowhere"), QString());
    QStandardItem *project = window.projectModel()->item(0);
    window.select(project);
    projects.edit();
    auto *form = qobject_cast<EditProjectDialog *>(tabs.find(EditorTab::Project)->widget());
    form->setName(QStringLiteral("works"));
    QSignalSpy told(&projects, &ProjectLifecycle::message);
    form->saveChanges();
    QCOMPARE(project->text(), QStringLiteral("works"));
    QCOMPARE(told,
             QList<QVariantList>{QVariantList{QStringLiteral("The Project 'works' is saved successfully.")}});

    MessageBoxes boxes;
    boxes.expect(QMessageBox::Cancel);
    boxes.expect(QMessageBox::No);
    QCOMPARE(projects.confirmExit(), ProjectLifecycle::Exit::Stay);
    projects.close();
    QCOMPARE(window.projectModel()->rowCount(), 0);
    QVERIFY(!tabs.find(EditorTab::Project));
    QTest::ignoreMessage(QtDebugMsg, "No projects found. Closing without prompt.");
    QCOMPARE(projects.confirmExit(), ProjectLifecycle::Exit::LeaveUnasked);
}

QTEST_MAIN(tst_ProjectLifecycle)
#include "tst_projectlifecycle.moc"

#include "mainwindow/projectlifecycle.h"

#include "docksundertest.h"
#include "mainwindow/editortabs.h"
#include "mainwindow/projectfiles.h"
#include "messages.h"
#include "modaldialogs.h"
#include "model/itemroles.h"
#include "projectdump.h"
#include "projects/editprojectdialog.h"
#include "windowundertest.h"

using Window = WindowUnderTest;

class TestProjectLifecycle : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

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
        return "Save Successful|JSON data saved to file:\n" + m_folder->filePath(name);
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Window> m_window;
};

void TestProjectLifecycle::init()
{
    QFile::remove("Settings.ini");
    m_folder.reset(new QTemporaryDir);
    m_window.reset(new Window);
}

void TestProjectLifecycle::newProjectHasFourFoldersAndOneService()
{
    m_window->handleProjectCreated("plant", "/nowhere", "text");
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
    QCOMPARE(
        ProjectDump::tree(m_window->projectModel()->item(0)),
        QStringList({"plant", "  +1 QString /nowhere", "  +2 QString text", "    Standard", "    Service",
                     "        IEC61850", "          +171 QString IEC61850", "    Box", "    Data"}));
    QVERIFY(m_window->projectTree()->isExpanded(m_window->projectModel()->item(0)->index()));
}

void TestProjectLifecycle::newProjectItemsHaveTheirIcons()
{
    const QStandardItem *project = m_window->addProject("plant");
    QCOMPARE(ProjectDump::iconBytes(project->icon()),
             ProjectDump::iconBytes(":/adsdemo/images/project_manage.svg"));
    const QStringList icons{"standard", "Service", "Box", "Data"};
    for (int row = 0; row < icons.size(); ++row) {
        QCOMPARE(ProjectDump::iconBytes(project->child(row)->icon()),
                 ProjectDump::iconBytes(QString(":/adsdemo/images/%1.svg").arg(icons.at(row))));
    }
    QCOMPARE(ProjectDump::iconBytes(project->child(1)->child(0)->icon()),
             ProjectDump::iconBytes(":/adsdemo/images/IEC61850.svg"));
}

void TestProjectLifecycle::newProjectActionAsksAndCreates()
{
    ModalDialogs dialogs;
    QWidget *parent = nullptr;
    dialogs.expect([&](QWidget *dialog) {
        parent = dialog->parentWidget();
        QTest::keyClicks(Window::input<QLineEdit>(dialog, "name"), "plant");
        Window::input<QLineEdit>(dialog, "path")->setText(m_folder->path());
        QTest::keyClicks(Window::input<QTextEdit>(dialog, "description"), "text");
        Window::press(dialog, "okButton");
    });
    m_window->findChild<QAction *>("actionNew_Project")->trigger();
    QCOMPARE(parent, static_cast<QWidget *>(m_window.data()));
    QCOMPARE(ProjectDump::shape(m_window->projectModel()->item(0)),
             "plant(Standard() Service(IEC61850()) Box() Data())");
    QCOMPARE(m_window->projectModel()->item(0)->data(projectPathRole).toString(), m_folder->path());
    QCOMPARE(m_window->projectModel()->item(0)->data(projectDescriptionRole).toString(), "text");
}

void TestProjectLifecycle::newProjectWritesAndOpensNothing()
{
    const QList<QStringList> areas = m_window->areas();
    m_window->addProject("plant", m_folder->path());
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
    QCOMPARE(m_window->areas(), areas);
}

void TestProjectLifecycle::nameOfAnOpenProjectIsRefused()
{
    m_window->addProject("plant");
    Messages messages;
    messages.expect();
    m_window->handleProjectCreated("plant", m_folder->path(), QString());
    QCOMPARE(messages.told(),
             QStringList("Warning|A project with the same name already exists. "
                         "Please use a different name."));
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

void TestProjectLifecycle::nameOfAFileIsRefusedThoughNoSuchProjectIsOpen()
{
    QFile file(m_folder->filePath("plant.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    Messages messages;
    messages.expect();
    m_window->handleProjectCreated("plant", m_folder->path(), QString());
    QCOMPARE(messages.told(),
             QStringList("Warning|A project with the same name already exists in the selected "
                         "directory. Please use a different name."));
    QCOMPARE(m_window->projectModel()->rowCount(), 0);
}

void TestProjectLifecycle::fileIsTestedBeforeTheOpenProjects()
{
    m_window->addProject("plant");
    QFile file(m_folder->filePath("plant.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    Messages messages;
    messages.expect();
    m_window->handleProjectCreated("plant", m_folder->path(), QString());
    QVERIFY(messages.told().value(0).contains("in the selected directory"));
    QCOMPARE(messages.told().size(), 1);
}

void TestProjectLifecycle::namesDifferByCase()
{
    m_window->addProject("plant");
    Messages messages;
    m_window->addProject("PLANT");
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(m_window->projectModel()->rowCount(), 2);
}

void TestProjectLifecycle::dialogClosesThoughTheProjectIsRefused()
{
    m_window->addProject("plant");
    ModalDialogs dialogs;
    Messages messages;
    messages.expect();
    dialogs.expect([&](QWidget *dialog) {
        Window::input<QLineEdit>(dialog, "name")->setText("plant");
        Window::input<QLineEdit>(dialog, "path")->setText(m_folder->path());
        Window::press(dialog, "okButton");
        QVERIFY(!dialog->isVisible());
    });
    m_window->slotNewProject();
    QCOMPARE(messages.told().size(), 1);
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

static QStringList shown(const QWidget *form)
{
    return {Window::input<QLineEdit>(form, "name")->text(), Window::input<QLineEdit>(form, "path")->text(),
            Window::input<QTextEdit>(form, "description")->toPlainText()};
}

static const QString editProject = "Edit Project";

void TestProjectLifecycle::clickOpensTheFormWithTheStoredValues()
{
    const QStandardItem *project = m_window->addProject("plant");
    m_window->click(project);
    QVERIFY(m_window->form(editProject));
    QCOMPARE(shown(m_window->form(editProject)), QStringList({"plant", "/nowhere", "about plant"}));
    const ads::CDockWidget *tab = m_window->tab(editProject);
    QVERIFY(tab->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
    QVERIFY(!tab->icon().isNull());
    QVERIFY(!tab->isClosed());
}

void TestProjectLifecycle::secondClickRebuildsTheForm()
{
    const QStandardItem *project = m_window->addProject("plant");
    m_window->click(project);
    const QPointer<QDialog> first = m_window->form(editProject);
    Window::input<QLineEdit>(first, "name")->setText("typed");
    m_window->click(project);
    Window::settle();
    QVERIFY(!first);
    QCOMPARE(m_window->tabs(editProject).size(), 1);
    QCOMPARE(m_window->countOf(editProject), 1);
    QCOMPARE(shown(m_window->form(editProject)).first(), "plant");
}

void TestProjectLifecycle::oneTabStaysHoweverOftenItIsOpenedAtOnce()
{
    m_window->select(m_window->addProject("plant"));
    // Closed docks are deleted by the event loop, which does not run between these.
    m_window->slotEditProject();
    m_window->slotEditProject();
    m_window->slotEditProject();
    QCOMPARE(m_window->tabs(editProject).size(), 1);
    QCOMPARE(m_window->countOf(editProject), 1);
    QVERIFY(m_window->form(editProject));
    Window::settle();
    QCOMPARE(m_window->countOf(editProject), 1);
    QCOMPARE(shown(m_window->form(editProject)).first(), "plant");
    QCOMPARE(m_window->dockManager()->findDockWidget(editProject), m_window->tab(editProject));
}

void TestProjectLifecycle::savedValuesGoToTheItemAlone()
{
    QStandardItem *project = m_window->addProject("plant", m_folder->path());
    m_window->projectModel()->setRowCount(2); // A row without an item is passed over.
    m_window->click(project);
    QDialog *form = m_window->form(editProject);
    Window::input<QLineEdit>(form, "name")->setText("mill");
    Window::input<QTextEdit>(form, "description")->setPlainText("other");
    Window::press(form, "saveButton");
    QCOMPARE(ProjectDump::tree(project).mid(0, 3),
             QStringList({"mill", "  +1 QString " + m_folder->path(), "  +2 QString other"}));
    QCOMPARE(m_window->messages(), QStringList("The Project 'mill' is saved successfully."));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
    Window::settle();
    QCOMPARE(m_window->form(editProject), form);
}

void TestProjectLifecycle::renamedProjectIsSavedUnderItsNewNameBesideTheOldFile()
{
    m_window->click(m_window->addProject("plant", m_folder->path()));
    Messages messages;
    messages.expect();
    messages.expect();
    m_window->saveProjectFile();
    Window::input<QLineEdit>(m_window->form(editProject), "name")->setText("mill");
    Window::press(m_window->form(editProject), "saveButton");
    m_window->saveProjectFile();
    QCOMPARE(messages.told(), QStringList({savedText("plant.json"), savedText("mill.json")}));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList({"mill.json", "plant.json"}));
}

void TestProjectLifecycle::duplicateNameChangesNothing()
{
    m_window->addProject("mill");
    QStandardItem *project = m_window->addProject("plant");
    const QStringList before = ProjectDump::tree(project);
    m_window->click(project);
    QDialog *form = m_window->form(editProject);
    Window::input<QLineEdit>(form, "name")->setText("mill");
    Window::input<QTextEdit>(form, "description")->setPlainText("other");
    Messages messages;
    messages.expect();
    Window::press(form, "saveButton");
    QCOMPARE(messages.told(),
             QStringList("Warning|A project with the same name already exists. "
                         "Please use a different name."));
    QCOMPARE(ProjectDump::tree(project), before);
    Window::settle();
    QCOMPARE(m_window->form(editProject), form);
    QCOMPARE(shown(form), QStringList({"mill", "/nowhere", "other"}));
    QCOMPARE(m_window->messages(), QStringList());
}

void TestProjectLifecycle::emptyDescriptionIsSaved()
{
    QStandardItem *project = m_window->addProject("plant");
    m_window->click(project);
    Window::input<QTextEdit>(m_window->form(editProject), "description")->clear();
    Window::press(m_window->form(editProject), "saveButton");
    QCOMPARE(project->data(projectDescriptionRole), QVariant(QString()));
    QCOMPARE(project->text(), "plant");
}

void TestProjectLifecycle::emptyNameIsRefused()
{
    QStandardItem *project = m_window->addProject("plant");
    m_window->click(project);
    Window::input<QLineEdit>(m_window->form(editProject), "name")->clear();
    Messages messages;
    messages.expect();
    Window::press(m_window->form(editProject), "saveButton");
    QCOMPARE(messages.told(), QStringList("Warning|Name cannot be empty."));
    QCOMPARE(project->text(), "plant");
}

void TestProjectLifecycle::cancelClosesTheForm()
{
    m_window->click(m_window->addProject("plant"));
    const QPointer<QDialog> form = m_window->form(editProject);
    const QSignalSpy closed(m_window->tab(editProject), &ads::CDockWidget::closed);
    Window::press(form, "cancelButton");
    QCOMPARE(closed.count(), 2);
    QCOMPARE(m_window->tabs(editProject).size(), 0);
    Window::settle();
    QVERIFY(!form);
    QCOMPARE(m_window->countOf(editProject), 0);
}

void TestProjectLifecycle::formOfAClosedProjectSavesNowhere()
{
    m_window->click(m_window->addProject("plant"));
    m_window->projectModel()->removeRow(0);
    Window::press(m_window->form(editProject), "saveButton");
    QCOMPARE(m_window->messages(), QStringList());
}

void TestProjectLifecycle::editNeedsACurrentItem()
{
    m_window->slotEditProject();
    QCOMPARE(m_window->tabs(editProject).size(), 0);
}

void TestProjectLifecycle::projectsNeedNoMainWindow()
{
    DocksUnderTest window;
    EditorTabs tabs(window.dockManager(), window.viewMenu(), nullptr);
    ProjectFiles files(nullptr, window.projectModel(), window.projectTree());
    ProjectLifecycle projects(window.projectModel(), window.projectTree(), &tabs, &files, &window);
    projects.create("plant", "/nowhere", QString());
    QStandardItem *project = window.projectModel()->item(0);
    window.select(project);
    projects.edit();
    auto *form = qobject_cast<EditProjectDialog *>(tabs.find(EditorTab::Project)->widget());
    form->setName("works");
    QSignalSpy told(&projects, &ProjectLifecycle::message);
    form->saveChanges();
    QCOMPARE(project->text(), "works");
    QCOMPARE(told, QList<QVariantList>{QVariantList{"The Project 'works' is saved successfully."}});

    Messages messages;
    messages.expect(QMessageBox::Cancel);
    messages.expect(QMessageBox::No);
    QCOMPARE(projects.confirmExit(), ProjectLifecycle::Exit::Stay);
    projects.close();
    QCOMPARE(window.projectModel()->rowCount(), 0);
    QVERIFY(!tabs.find(EditorTab::Project));
    QTest::ignoreMessage(QtDebugMsg, "No projects found. Closing without prompt.");
    QCOMPARE(projects.confirmExit(), ProjectLifecycle::Exit::LeaveUnasked);
}

QTEST_MAIN(TestProjectLifecycle)
#include "tst_projectlifecycle.moc"

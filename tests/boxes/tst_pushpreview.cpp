#include "boxes/outcomeline.h"
#include "boxes/pushpreview.h"
#include "boxes/remarksdialog.h"
#include "model/itemroles.h"
#include "model/projecttree.h"
#include "workspacefake.h"

#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <QtTest>

namespace {

// A window with a tree, that counts how often the document is made.
class TreeWorkspace : public WorkspaceFake
{
public:
    TreeWorkspace() { treeSelection = &m_selection; }

    QStandardItem *currentItem() const override { return ProjectTree::itemAt(m_selection.currentIndex()); }
    QJsonObject buildProjectJson(QStandardItem *project) const override
    {
        ++m_documents;
        return WorkspaceFake::buildProjectJson(project);
    }
    int documents() const { return m_documents; }

    void select(const QStandardItem *item)
    {
        m_selection.setCurrentIndex(item ? item->index() : QModelIndex(),
                                    QItemSelectionModel::ClearAndSelect);
    }
    // A project with a Service that has its port, and no remark.
    QStandardItem *addProject(const QString &name)
    {
        QStandardItem *project = ProjectTree::makeProject(name, "/nowhere", QString());
        m_tree.appendRow(project);
        ProjectTree::appendMissingFolders(project);
        ProjectTree::appendDefinition(project->child(ProjectTree::ServiceRow), "IEC61850", QString(),
                                      {{serviceProtocolRole, "IEC61850"}, {servicePortRole, "102"}});
        return project;
    }
    // One that brings a remark.
    QStandardItem *addBox(QStandardItem *project, const QString &name)
    {
        return ProjectTree::appendDefinition(project->child(ProjectTree::BoxRow), name, QString());
    }

private:
    QStandardItemModel m_tree;
    QItemSelectionModel m_selection{&m_tree};
    mutable int m_documents = 0;
};

} // namespace

class TestPushPreview : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void targetFollowsTreeAndAddress();
    void targetWithoutAWindow();
    void projectOfAnotherBoxStandsOut();
    void whatIsBelowStaysWhereItIs();
    void remarksAreCounted();
    void burstOfChangesIsOneCheck();
    void liveValuesAreNotChecked();
    void otherNodeOfTheProjectIsNoCheck();
    void hiddenPageChecksNothing();
    void remarkSelectsItsNode_data();
    void remarkSelectsItsNode();
    void listFollowsTheProject();

private:
    QString target() const { return m_preview->findChild<QLabel *>("pushTarget")->text(); }
    QPushButton *button() const { return m_preview->findChild<QPushButton *>("remarksButton"); }
    // What the button says, or "none" where it is not to be seen.
    QString count() const { return button()->isVisible() ? button()->text() : QString("none"); }
    RemarksDialog *list() const { return m_preview->findChild<RemarksDialog *>(); }

    QScopedPointer<TreeWorkspace> m_workspace;
    QScopedPointer<QLineEdit> m_address;
    QScopedPointer<PushPreview> m_preview;
    QScopedPointer<QWidget> m_page; // that a test put it into
};

void TestPushPreview::init()
{
    m_workspace.reset(new TreeWorkspace);
    m_address.reset(new QLineEdit("192.168.1.70"));
    m_preview.reset(new PushPreview(m_workspace.data(), m_address.data(), nullptr));
    m_preview->show();
}

void TestPushPreview::cleanup()
{
    m_preview.reset();
    m_page.reset();
    m_address.reset();
    m_workspace.reset();
}

void TestPushPreview::targetFollowsTreeAndAddress()
{
    QStandardItem *north = m_workspace->addProject("north");
    QStandardItem *south = m_workspace->addProject("south");
    QCOMPARE(target(), "Update project pushes nothing: no node is selected in the tree.");
    m_workspace->select(north->child(ProjectTree::ServiceRow)->child(0));
    QTRY_COMPARE(target(), "Update project pushes 'north' to 192.168.1.70.");
    m_workspace->select(south);
    QTRY_COMPARE(target(), "Update project pushes 'south' to 192.168.1.70.");
    m_address->setText("10.0.0.1");
    QCOMPARE(target(), "Update project pushes 'south' to 10.0.0.1.");
    m_address->clear();
    QCOMPARE(target(), "Update project would push 'south', but the address above is empty.");
    south->setText("<b>east</b>");
    QTRY_COMPARE(target(), "Update project would push '<b>east</b>', but the address above is empty.");
    m_workspace->select(nullptr);
    QTRY_COMPARE(target(), "Update project pushes nothing: no node is selected in the tree.");
}

void TestPushPreview::projectOfAnotherBoxStandsOut()
{
    QStandardItem *north = m_workspace->addProject("north");
    QStandardItem *south = m_workspace->addProject("south");
    m_preview->setOwner([north] { return north; });
    const auto *line = m_preview->findChild<OutcomeLine *>("pushTarget");
    m_workspace->select(south);
    QTRY_COMPARE(target(),
                 "Update project pushes 'south' to 192.168.1.70. The Box of this form is in ANOTHER project, "
                 "'north'.");
    QVERIFY(line->isAmiss());
    m_workspace->select(north);
    QTRY_COMPARE(target(), "Update project pushes 'north' to 192.168.1.70.");
    QVERIFY(!line->isAmiss());
}

void TestPushPreview::targetWithoutAWindow()
{
    m_preview.reset(new PushPreview(nullptr, m_address.data(), nullptr));
    m_preview->show();
    QCOMPARE(target(), "Update project pushes nothing: no node is selected in the tree.");
    QVERIFY(!QTest::qWaitFor([this] { return count() != "none"; }, 120));
}

void TestPushPreview::whatIsBelowStaysWhereItIs()
{
    m_page.reset(new QWidget);
    auto *column = new QVBoxLayout(m_page.data());
    auto *below = new QPushButton("Update project", m_page.data());
    column->addWidget(m_preview.data());
    column->addWidget(below);
    column->addStretch(1);
    m_page->resize(480, 460);
    m_page->show();
    QStandardItem *north = m_workspace->addProject("Riverside substation");
    QStandardItem *south = m_workspace->addProject("Hillside substation");
    m_preview->setOwner([north] { return north; });
    m_workspace->select(north);
    QTRY_COMPARE(target(), "Update project pushes 'Riverside substation' to 192.168.1.70.");
    QVERIFY(QTest::qWaitForWindowExposed(m_page.data()));
    const int place = below->y();
    m_workspace->addBox(south, "Gateway"); // brings a remark
    m_workspace->select(south);
    QTRY_COMPARE(count(), "1 remark on this project");
    QVERIFY(target().contains("ANOTHER"));
    QCoreApplication::processEvents();
    QCOMPARE(below->y(), place);
}

void TestPushPreview::remarksAreCounted()
{
    QStandardItem *project = m_workspace->addProject("north");
    m_workspace->select(project);
    QTRY_COMPARE(m_workspace->documents(), 1);
    QCOMPARE(count(), "none");
    QStandardItem *box = m_workspace->addBox(project, "gate");
    QTRY_COMPARE(count(), "1 remark on this project");
    m_workspace->addBox(project, "other");
    QTRY_COMPARE(count(), "2 remarks on this project");
    box->setData("10.0.0.1", boxIpRole);
    QTRY_COMPARE(count(), "1 remark on this project");
    project->child(ProjectTree::BoxRow)->removeRow(1);
    QTRY_COMPARE(count(), "none");
}

void TestPushPreview::burstOfChangesIsOneCheck()
{
    QStandardItem *project = m_workspace->addProject("north");
    m_workspace->select(project);
    QTRY_COMPARE(m_workspace->documents(), 1);
    for (int i = 0; i < 100; ++i) {
        m_workspace->addBox(project, QString::number(i));
    }
    QTRY_COMPARE(count(), "100 remarks on this project");
    QCOMPARE(m_workspace->documents(), 2);
}

void TestPushPreview::liveValuesAreNotChecked()
{
    QStandardItem *project = m_workspace->addProject("north");
    m_workspace->select(project);
    QTRY_COMPARE(m_workspace->documents(), 1);
    QStandardItem *node =
        ProjectTree::appendDefinition(project->child(ProjectTree::DataRow), "meter", QString());
    node->setData(QVariantList{1}, dataRowsRole);
    project->child(ProjectTree::DataRow)->removeRow(0);
    QVERIFY(!QTest::qWaitFor([this] { return m_workspace->documents() > 1; }, 120));
}

void TestPushPreview::otherNodeOfTheProjectIsNoCheck()
{
    QStandardItem *project = m_workspace->addProject("north");
    QStandardItem *other = m_workspace->addProject("south");
    m_workspace->select(project);
    QTRY_COMPARE(m_workspace->documents(), 1);
    m_workspace->select(project->child(ProjectTree::ServiceRow));
    QVERIFY(!QTest::qWaitFor([this] { return m_workspace->documents() > 1; }, 120));
    m_workspace->select(other);
    QTRY_COMPARE(m_workspace->documents(), 2);
}

void TestPushPreview::hiddenPageChecksNothing()
{
    m_preview->hide();
    QStandardItem *project = m_workspace->addProject("north");
    m_workspace->addBox(project, "gate");
    m_workspace->select(project);
    QVERIFY(!QTest::qWaitFor([this] { return m_workspace->documents() > 0; }, 120));
    m_preview->show();
    QCOMPARE(target(), "Update project pushes 'north' to 192.168.1.70.");
    QTRY_COMPARE(count(), "1 remark on this project");
}

void TestPushPreview::remarkSelectsItsNode_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("click") << false;
    QTest::newRow("Enter") << true;
}

void TestPushPreview::remarkSelectsItsNode()
{
    QFETCH(bool, byKey);
    QStandardItem *project = m_workspace->addProject("north");
    m_workspace->addBox(project, "gate");
    QStandardItem *second = m_workspace->addBox(project, "<i>yard</i>");
    m_workspace->select(project);
    QTRY_COMPARE(count(), "2 remarks on this project");
    button()->click();
    QVERIFY(list() && list()->isVisible() && !list()->isModal());
    QCOMPARE(list()->windowTitle(), "Remarks on 'north'");
    auto *remarks = list()->findChild<QListWidget *>("remarks");
    QCOMPARE(remarks->count(), 2);
    QCOMPARE(remarks->item(1)->text(), "Warning: Box/<i>yard</i>: The IP address is empty.");
    if (byKey) {
        remarks->setCurrentRow(1);
        QTest::keyClick(remarks, Qt::Key_Return);
    } else {
        const QPoint spot = remarks->visualItemRect(remarks->item(1)).center();
        QTest::mouseClick(remarks->viewport(), Qt::LeftButton, Qt::NoModifier, spot);
    }
    QCOMPARE(m_workspace->currentItem(), second);
    QVERIFY(list()->isVisible());
}

void TestPushPreview::listFollowsTheProject()
{
    QStandardItem *project = m_workspace->addProject("north");
    QStandardItem *box = m_workspace->addBox(project, "gate");
    m_workspace->select(project);
    QTRY_COMPARE(count(), "1 remark on this project");
    button()->click();
    button()->click();
    QCOMPARE(m_preview->findChildren<RemarksDialog *>().size(), 1);
    m_preview->hide(); // another tab came to the front, in which the user mends the project
    box->setData("10.0.0.1", boxIpRole);
    QTRY_COMPARE(list()->findChild<QListWidget *>("remarks")->count(), 0);
    QCOMPARE(list()->findChild<QLabel *>()->text(), "There is no remark on this project.");
}

QTEST_MAIN(TestPushPreview)
#include "tst_pushpreview.moc"

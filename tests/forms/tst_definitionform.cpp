#include "forms/definitionform.h"
#include "logtail.h"
#include "widgets/quietline.h"
#include "workspacefake.h"

#include <QLabel>
#include <QPointer>
#include <QStandardItemModel>
#include <QtTest>

#include <functional>

namespace {

// Notes what its form has it do.
struct NotingPart : FormPart {
    NotingPart(QString partName, QStringList *notes)
        : name(std::move(partName))
        , noted(notes)
    {
    }
    void fill(QStandardItem *item) override { note("fill", item); }
    void refill(QStandardItem *item) override { note("refill", item); }
    void save(QStandardItem *item) override
    {
        note("save", item);
        if (const auto happens = meanwhile) { // a copy, since the part may go
            happens();
        }
    }
    void clear() override { noted->append("clear " + name); }
    void note(const char *what, const QStandardItem *item) const
    {
        noted->append(QLatin1String(what) + QLatin1Char(' ') + name + QLatin1Char(' ') + item->text());
    }

    QString name;
    QStringList *noted;
    std::function<void()> meanwhile; // of a save: what a message lets happen
};

class NotingForm : public DefinitionForm
{
    Q_OBJECT
public:
    NotingForm(QStringList *notes, QStandardItem *item, Workspace *workspace, const char *savedAs)
        : DefinitionForm({"NotingForm", "'%1' is kept.", savedAs}, item, workspace)
        , first("first", notes)
        , second("second", notes)
    {
        setContent(new QLabel(this), {&first, &second});
    }
    explicit NotingForm(QStringList *notes, QStandardItem *item, Workspace *workspace = nullptr)
        : NotingForm(notes, item, workspace, "NotingForm")
    {
    }

    NotingPart first;
    NotingPart second;
};

} // namespace

// What every form of a definition does with its parts.
class TestDefinitionForm : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void partsAreFilledSavedAndClearedInOrder();
    void savingTellsTheWorkspaceTheNewName();
    void formMayDieWhileAPartIsSaved();
    void itemMayLeaveWhileAPartIsSaved();
    void otherItemMayComeWhileAPartIsSaved();
    void savingWithoutItsNodeDoesNothing();
    void writesItsLifeToTheLog();
    void namesProjectAndFolder();
    void namesNothingAboveTheTop();
    void followsARenameOfTheProject();
    void showsForAMomentThatAnotherItemCame();

private:
    // An item in a folder of a project.
    QStandardItem *appendItem(const char *project, const char *folder);
    static const QuietLine *ownerOf(const QWidget &form) { return form.findChild<QuietLine *>("owner"); }

    QStandardItemModel m_model;
    QStringList m_notes;
    WorkspaceFake m_workspace;
};

void TestDefinitionForm::init()
{
    m_model.clear();
    m_model.appendRow(new QStandardItem("A"));
    m_model.appendRow(new QStandardItem("B"));
    m_notes.clear();
    m_workspace.messages.clear();
}

void TestDefinitionForm::partsAreFilledSavedAndClearedInOrder()
{
    NotingForm form(&m_notes, m_model.item(0));
    form.saveChanges();
    form.replaceItem(m_model.item(1));
    form.saveChanges();
    form.clearData();
    QCOMPARE(
        m_notes,
        (QStringList{"fill first A", "fill second A", "save first A", "save second A", "refill first B",
                     "refill second B", "save first B", "save second B", "clear first", "clear second"}));
}

void TestDefinitionForm::savingTellsTheWorkspaceTheNewName()
{
    NotingForm form(&m_notes, m_model.item(0), &m_workspace);
    form.second.meanwhile = [this] { m_model.item(0)->setText("New"); };
    form.saveChanges();
    QCOMPARE(m_workspace.messages, QStringList("'New' is kept."));
}

void TestDefinitionForm::formMayDieWhileAPartIsSaved()
{
    const LogTail log("NotingForm");
    const QPointer<NotingForm> form = new NotingForm(&m_notes, m_model.item(0), &m_workspace);
    form->first.meanwhile = [form] { delete form; };
    m_notes.clear();
    form->saveChanges();
    QVERIFY(!form);
    QCOMPARE(m_notes, QStringList("save first A"));
    QCOMPARE(m_workspace.messages, QStringList());
    QCOMPARE(log.events(), (QStringList{"NotingForm: new-nuilt", "NotingForm: destroyed"}));
}

void TestDefinitionForm::itemMayLeaveWhileAPartIsSaved()
{
    NotingForm form(&m_notes, m_model.item(0), &m_workspace);
    form.first.meanwhile = [this] { m_model.removeRow(0); };
    m_notes.clear();
    form.saveChanges();
    QCOMPARE(m_notes, QStringList("save first A"));
    QCOMPARE(m_workspace.messages, QStringList());
}

void TestDefinitionForm::otherItemMayComeWhileAPartIsSaved()
{
    NotingForm form(&m_notes, m_model.item(0), &m_workspace);
    form.first.meanwhile = [this, &form] { form.replaceItem(m_model.item(1)); };
    m_notes.clear();
    form.saveChanges();
    QCOMPARE(m_notes, (QStringList{"save first A", "refill first B", "refill second B"}));
    QCOMPARE(m_workspace.messages, QStringList());
}

void TestDefinitionForm::savingWithoutItsNodeDoesNothing()
{
    NotingForm form(&m_notes, m_model.item(0), &m_workspace);
    m_model.removeRow(0);
    m_notes.clear();
    form.saveChanges();
    QCOMPARE(m_notes, QStringList());
    QCOMPARE(m_workspace.messages, QStringList());
}

void TestDefinitionForm::writesItsLifeToTheLog()
{
    const LogTail log("Noting");
    {
        NotingForm form(&m_notes, m_model.item(0), nullptr, "NotingOfOld");
        form.replaceItem(m_model.item(1));
        form.saveChanges();
    }
    QCOMPARE(log.events(),
             (QStringList{"NotingForm: new-nuilt", "NotingForm: replace", "NotingOfOld: save",
                          "NotingForm: destroyed"}));
}

QStandardItem *TestDefinitionForm::appendItem(const char *project, const char *folder)
{
    auto *item = new QStandardItem("Relay");
    auto *below = new QStandardItem(QString::fromLatin1(folder));
    auto *top = new QStandardItem(QString::fromLatin1(project));
    below->appendRow(item);
    top->appendRow(below);
    m_model.appendRow(top);
    return item;
}

void TestDefinitionForm::namesProjectAndFolder()
{
    QStandardItem *here = appendItem("Riverside substation", "Standard");
    QStandardItem *there = appendItem("North feeder", "Box");
    NotingForm form(&m_notes, here);
    form.show();
    QCOMPARE(ownerOf(form)->text(), "Riverside substation · Standard");
    QVERIFY(ownerOf(form)->isVisible());
    QVERIFY(ownerOf(form)->y() < form.findChild<QLabel *>()->mapTo(&form, QPoint()).y());
    form.replaceItem(there);
    QCOMPARE(ownerOf(form)->text(), "North feeder · Box");
    m_model.clear();
    QCOMPARE(ownerOf(form)->text(), "North feeder · Box");
}

void TestDefinitionForm::namesNothingAboveTheTop()
{
    NotingForm form(&m_notes, m_model.item(0));
    form.show();
    QVERIFY(!ownerOf(form)->isVisible());
    form.replaceItem(appendItem("Riverside substation", "Standard"));
    QVERIFY(ownerOf(form)->isVisible());
}

void TestDefinitionForm::followsARenameOfTheProject()
{
    QStandardItem *item = appendItem("Riverside", "Standard");
    QStandardItem *other = appendItem("North feeder", "Box");
    NotingForm form(&m_notes, item);
    item->parent()->parent()->setText("Riverside substation");
    QCOMPARE(ownerOf(form)->text(), "Riverside substation · Standard");
    form.replaceItem(other);
    item->parent()->parent()->setText("Hillside");
    QCOMPARE(ownerOf(form)->text(), "North feeder · Box");
    other->parent()->parent()->setText("South feeder");
    QCOMPARE(ownerOf(form)->text(), "South feeder · Box");
}

void TestDefinitionForm::showsForAMomentThatAnotherItemCame()
{
    QuietLine::moment = 50;
    QStandardItem *item = appendItem("Riverside", "Standard");
    NotingForm form(&m_notes, item);
    QVERIFY(!ownerOf(form)->isHighlighted());
    form.replaceItem(item);
    QVERIFY(!ownerOf(form)->isHighlighted());
    form.replaceItem(appendItem("Riverside", "Standard"));
    QVERIFY(ownerOf(form)->isHighlighted());
    QTRY_VERIFY(!ownerOf(form)->isHighlighted());
}

QTEST_MAIN(TestDefinitionForm)
#include "tst_definitionform.moc"

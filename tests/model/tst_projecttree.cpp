#include "model/itemroles.h"
#include "model/projecttree.h"
#include "projectdump.h"

#include <QFile>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QtTest>

using ProjectDump::iconBytes;

class TestProjectTree : public QObject
{
    Q_OBJECT
private slots:
    void levelAndProjectFollowFromTheDepth();
    void itemAtIsThatOfTheIndex();
    void childNamedComparesExactlyAndTakesTheFirst();
    void projectNamedLooksAtTopLevelRowsOnly();
    void newProjectHasItsTextRolesAndIconAndNoFolders();
    void missingFoldersComeInTheirOrder();
    void foldersAreNamedByTheirRows();
    void missingFoldersAreAppendedBehindThoseThatAreThere();
    void folderTextsAreNeverTranslated();
    void definitionIsAppendedWithItsIcon();
    void definitionWithoutIconHasNone();
    void flagsAreBooleansOrTexts_data();
    void flagsAreBooleansOrTexts();
    void listTypesAreRegisteredByName();
    void unsetRoleReadsAsEmptyText();
    void listRoleOfTheWrongTypeReadsAsEmpty_data();
    void listRoleOfTheWrongTypeReadsAsEmpty();
};

void TestProjectTree::itemAtIsThatOfTheIndex()
{
    QStandardItemModel model;
    model.appendRow(ProjectTree::makeProject("p", QString(), QString()));
    ProjectTree::appendMissingFolders(model.item(0));
    QCOMPARE(ProjectTree::itemAt(model.index(0, 0)), model.item(0));
    QCOMPARE(ProjectTree::itemAt(model.index(1, 0, model.index(0, 0))), model.item(0)->child(1));
    QCOMPARE(ProjectTree::itemAt(QModelIndex()), nullptr);
    const QStringListModel other({"p"});
    QCOMPARE(ProjectTree::itemAt(other.index(0)), nullptr);
}

void TestProjectTree::levelAndProjectFollowFromTheDepth()
{
    QStandardItemModel model;
    auto *project = new QStandardItem;
    model.appendRow(project);
    auto *folder = new QStandardItem;
    project->appendRow(folder);
    auto *definition = new QStandardItem;
    folder->appendRow(definition);
    QCOMPARE(ProjectTree::levelOf(project), ProjectTree::Level::Project);
    QCOMPARE(ProjectTree::levelOf(folder), ProjectTree::Level::Folder);
    QCOMPARE(ProjectTree::levelOf(definition), ProjectTree::Level::Definition);
    for (QStandardItem *item : {project, folder, definition}) {
        QCOMPARE(ProjectTree::projectOf(item), project);
    }
    QCOMPARE(ProjectTree::projectOf(nullptr), nullptr);
}

void TestProjectTree::childNamedComparesExactlyAndTakesTheFirst()
{
    QStandardItem folder;
    folder.appendRow(new QStandardItem("ABC"));
    folder.appendRow(new QStandardItem("abc"));
    folder.appendRow(new QStandardItem("abc"));
    QCOMPARE(ProjectTree::childNamed(&folder, "abc"), folder.child(1));
    QCOMPARE(ProjectTree::childNamed(&folder, "ABC"), folder.child(0));
    QCOMPARE(ProjectTree::childNamed(&folder, "Abc"), nullptr);
    QCOMPARE(ProjectTree::childNamed(&folder, QString()), nullptr);
    QCOMPARE(ProjectTree::childNamed(nullptr, "abc"), nullptr);
}

void TestProjectTree::projectNamedLooksAtTopLevelRowsOnly()
{
    QStandardItemModel model;
    auto *project = new QStandardItem("P");
    model.appendRow(project);
    project->appendRow(new QStandardItem("Q"));
    QCOMPARE(ProjectTree::projectNamed(model, "P"), project);
    QCOMPARE(ProjectTree::projectNamed(model, "p"), nullptr);
    QCOMPARE(ProjectTree::projectNamed(model, "Q"), nullptr);
}

void TestProjectTree::newProjectHasItsTextRolesAndIconAndNoFolders()
{
    const QScopedPointer<QStandardItem> project(ProjectTree::makeProject("P", "/home/anna", "two\nlines"));
    QCOMPARE(ProjectDump::tree(project.data()),
             QStringList({"P", "  +1 QString /home/anna", "  +2 QString two\nlines"}));
    QVERIFY(QFile::exists(":/adsdemo/images/project_manage.svg"));
    QCOMPARE(iconBytes(project->icon()), iconBytes(":/adsdemo/images/project_manage.svg"));
}

void TestProjectTree::missingFoldersComeInTheirOrder()
{
    QStandardItem project("P");
    ProjectTree::appendMissingFolders(&project);
    QCOMPARE(ProjectDump::shape(&project), "P(Standard() Service() Box() Data())");
    const QString icons[] = {"standard", "Service", "Box", "Data"};
    for (int row = 0; row < 4; ++row) {
        const QString path = QString(":/adsdemo/images/%1.svg").arg(icons[row]);
        QVERIFY2(QFile::exists(path), qPrintable(path));
        QCOMPARE(iconBytes(project.child(row)->icon()), iconBytes(path));
    }
    ProjectTree::appendMissingFolders(&project);
    QCOMPARE(project.rowCount(), 4);
}

void TestProjectTree::foldersAreNamedByTheirRows()
{
    QStandardItem project;
    ProjectTree::appendMissingFolders(&project);
    QCOMPARE(project.child(ProjectTree::StandardRow)->text(), ProjectTree::standardFolder);
    QCOMPARE(project.child(ProjectTree::ServiceRow)->text(), ProjectTree::serviceFolder);
    QCOMPARE(project.child(ProjectTree::BoxRow)->text(), ProjectTree::boxFolder);
    QCOMPARE(project.child(ProjectTree::DataRow)->text(), ProjectTree::dataFolder);
}

void TestProjectTree::missingFoldersAreAppendedBehindThoseThatAreThere()
{
    QStandardItem project("P");
    project.appendRow(new QStandardItem("Box"));
    project.appendRow(new QStandardItem("standard"));
    ProjectTree::appendMissingFolders(&project);
    QCOMPARE(ProjectDump::shape(&project), "P(Box() standard() Standard() Service() Data())");
}

void TestProjectTree::folderTextsAreNeverTranslated()
{
    QCOMPARE(ProjectTree::standardFolder, "Standard");
    QCOMPARE(ProjectTree::serviceFolder, "Service");
    QCOMPARE(ProjectTree::boxFolder, "Box");
    QCOMPARE(ProjectTree::dataFolder, "Data");
}

void TestProjectTree::definitionIsAppendedWithItsIcon()
{
    QStandardItem folder;
    folder.appendRow(new QStandardItem("first"));
    const QStandardItem *item = ProjectTree::appendDefinition(&folder, "second", ProjectTree::boxIcon);
    QCOMPARE(folder.child(1), item);
    QCOMPARE(item->text(), "second");
    QCOMPARE(iconBytes(item->icon()), iconBytes(":/adsdemo/images/box-file.svg"));
    QCOMPARE(ProjectTree::serviceIcon, ":/adsdemo/images/IEC61850.svg");
    QCOMPARE(ProjectTree::dataIcon, ":/adsdemo/images/data-file.svg");
}

void TestProjectTree::definitionWithoutIconHasNone()
{
    QStandardItem folder;
    const QStandardItem *item = ProjectTree::appendDefinition(&folder, "x", QString());
    QVERIFY(item->icon().isNull());
}

void TestProjectTree::flagsAreBooleansOrTexts_data()
{
    QTest::addColumn<QVariant>("flag");
    QTest::addColumn<bool>("isTrue");
    QTest::newRow("text true") << QVariant("true") << true;
    QTest::newRow("boolean true") << QVariant(true) << true;
    QTest::newRow("text false") << QVariant("false") << false;
    QTest::newRow("boolean false") << QVariant(false) << false;
    QTest::newRow("unset") << QVariant() << false;
    QTest::newRow("other case") << QVariant("True") << false;
    QTest::newRow("the document's one") << QVariant("1") << false;
    QTest::newRow("number") << QVariant(1) << false;
}

void TestProjectTree::flagsAreBooleansOrTexts()
{
    QFETCH(QVariant, flag);
    QFETCH(bool, isTrue);
    QCOMPARE(ProjectTree::isTrue(flag), isTrue);
}

void TestProjectTree::listTypesAreRegisteredByName()
{
    ProjectTree::registerTypes();
    ProjectTree::registerTypes();
    QCOMPARE(QMetaType::type("QList<QVariantList>"), qMetaTypeId<RowList>());
    QCOMPARE(QMetaType::type("QMap<QString,QList<QVariantList>>"), qMetaTypeId<GroupMap>());
    QCOMPARE(QVariant::fromValue(RowList()).typeName(), "QList<QVariantList>");
    QCOMPARE(QVariant::fromValue(GroupMap()).typeName(), "QMap<QString,QList<QVariantList> >");
}

void TestProjectTree::unsetRoleReadsAsEmptyText()
{
    const QStandardItem item;
    QVERIFY(!item.data(boxLanIpRole).isValid());
    QCOMPARE(item.data(boxLanIpRole).toString(), QString());
}

void TestProjectTree::listRoleOfTheWrongTypeReadsAsEmpty_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("unset") << QVariant();
    QTest::newRow("text") << QVariant("rows");
    QTest::newRow("number") << QVariant(7);
    QTest::newRow("list of texts") << QVariant(QStringList{"a"});
    QTest::newRow("flat list") << QVariant(QVariantList{1, 2});
    QTest::newRow("map of texts") << QVariant(QVariantMap{{"a", 1}});
}

void TestProjectTree::listRoleOfTheWrongTypeReadsAsEmpty()
{
    QFETCH(QVariant, value);
    QCOMPARE(value.value<RowList>(), RowList());
    QCOMPARE(value.value<GroupMap>(), GroupMap());
}

QTEST_GUILESS_MAIN(TestProjectTree)
#include "tst_projecttree.moc"

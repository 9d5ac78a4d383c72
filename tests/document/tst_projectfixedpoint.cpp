#include "document/projectreader.h"
#include "documenttest.h"
#include "randomproject.h"
#include "rounds.h"

#include <algorithm>

// Whatever the forms can make is written, read and written again without a change.
class TestProjectFixedPoint : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { ProjectTree::registerTypes(); }
    void randomProjects_data();
    void randomProjects();
    void tenGroupsChangeTheirOrderOnly();
    void namesThatMeetSettleAtOnce();
};

namespace {

QByteArray readAndWritten(const QByteArray &document)
{
    QStandardItemModel model;
    return projectDocument(loadProject(model, QJsonDocument::fromJson(document).object(), "/tmp"));
}

// The groups of each Standard, in an order of their own.
QList<QByteArrayList> sortedGroups(const QByteArray &document)
{
    QList<QByteArrayList> standards;
    const QJsonArray array = QJsonDocument::fromJson(document).object().value("standards").toArray();
    for (const QJsonValue &standard : array) {
        QByteArrayList groups;
        const QJsonArray datas = standard.toObject().value("datas").toArray();
        for (const QJsonValue &group : datas) {
            groups.append(QJsonDocument(group.toObject()).toJson());
        }
        std::sort(groups.begin(), groups.end());
        standards.append(groups);
    }
    return standards;
}

} // namespace

void TestProjectFixedPoint::randomProjects_data()
{
    QTest::addColumn<quint32>("firstSeed");
    QTest::newRow("seeds from 1") << 1u;
    // New ones each time; the message says which one to look at when it fails.
    QTest::newRow("seeds from somewhere") << QRandomGenerator::global()->generate();
}

void TestProjectFixedPoint::randomProjects()
{
    QFETCH(quint32, firstSeed);

    const auto end = firstSeed + quint32(rounds(200));
    for (quint32 seed = firstSeed; seed != end; ++seed) {
        QStandardItemModel model;
        const QByteArray written = projectDocument(RandomProject(seed, 9).makeIn(&model));
        QVERIFY2(QJsonDocument::fromJson(written).isObject(), qPrintable(QString("seed %1").arg(seed)));
        QVERIFY2(readAndWritten(written) == written, qPrintable(QString("seed %1").arg(seed)));
    }
}

void TestProjectFixedPoint::tenGroupsChangeTheirOrderOnly()
{
    int changed = 0;
    for (quint32 seed = 1; seed <= 50; ++seed) {
        QStandardItemModel model;
        const QByteArray written = projectDocument(RandomProject(seed, 14).makeIn(&model));
        const QByteArray again = readAndWritten(written);
        QCOMPARE(sortedGroups(again), sortedGroups(written));
        changed += again == written ? 0 : 1;
    }
    QVERIFY(changed > 0);
}

void TestProjectFixedPoint::namesThatMeetSettleAtOnce()
{
    for (quint32 seed = 1; seed <= 50; ++seed) {
        QStandardItemModel model;
        QStandardItem *project = RandomProject(seed, 9).makeIn(&model);
        for (int folder = 0; folder < 3; ++folder) {
            for (int row = 0; row < project->child(folder)->rowCount(); ++row) {
                project->child(folder)->child(row)->setText("one");
            }
        }
        const QByteArray joined = readAndWritten(projectDocument(project));
        const QJsonObject root = QJsonDocument::fromJson(joined).object();
        for (const char *key : {"standards", "services", "boxs"}) {
            QVERIFY(root.value(QLatin1String(key)).toArray().size() <= 1);
        }
        QCOMPARE(readAndWritten(joined), joined);
    }
}

QTEST_GUILESS_MAIN(TestProjectFixedPoint)
#include "tst_projectfixedpoint.moc"

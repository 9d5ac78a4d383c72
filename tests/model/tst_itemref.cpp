#include "model/itemref.h"

#include <QStandardItemModel>
#include <QtTest>

#include <memory>

// A reference that knows when its item has gone.
class TestItemRef : public QObject
{
    Q_OBJECT
private slots:
    void followsTheItemToItsEnd();
    void isNullWithoutTheModel();
    void takesALooseItemAsItIs();
};

void TestItemRef::followsTheItemToItsEnd()
{
    QStandardItemModel model;
    auto *parent = new QStandardItem;
    model.appendRow(parent);
    auto *item = new QStandardItem;
    parent->appendRow(item);
    const ItemRef ref(item);
    const ItemRef copy = ref;
    parent->insertRow(0, new QStandardItem);
    QCOMPARE(ref.item(), item);
    model.removeRow(0);
    QCOMPARE(ref.item(), nullptr);
    QCOMPARE(copy.item(), nullptr);
}

void TestItemRef::isNullWithoutTheModel()
{
    auto model = std::make_unique<QStandardItemModel>();
    model->appendRow(new QStandardItem);
    const ItemRef ref(model->item(0));
    model.reset();
    QCOMPARE(ref.item(), nullptr);
}

void TestItemRef::takesALooseItemAsItIs()
{
    QStandardItem item;
    QCOMPARE(ItemRef(&item).item(), &item);
    QCOMPARE(ItemRef(nullptr).item(), nullptr);
}

QTEST_GUILESS_MAIN(TestItemRef)
#include "tst_itemref.moc"

#pragma once

#include <QAbstractItemModelTester>

// Fails the test where the model tells its views something that does not hold.
inline void watchModel(QAbstractItemModel *model)
{
    new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest, model);
}

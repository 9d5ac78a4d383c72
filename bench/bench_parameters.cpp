// Large parameter tables in the form of a Modbus Standard.

#include "definitions/choices.h"
#include "model/itemroles.h"
#include "standards/standardmodbuseditdialog.h"
#include "support/largeplant.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardItem>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

namespace {

std::unique_ptr<QStandardItem> standardWith(int points)
{
    auto item = std::make_unique<QStandardItem>(QStringLiteral("Line 1"));
    item->setData(QStringLiteral("Modbus"), standardProtocolRole);
    item->setData(QVariant::fromValue(GroupMap{{QStringLiteral("Modbus-1"), LargePlant::modbusTab(points)}}),
                  standardDatasRole);
    return item;
}

// The form as the user sees it, with its tabs loaded.
std::unique_ptr<standardModbusEditDialog> opened(QStandardItem *item)
{
    auto form = std::make_unique<standardModbusEditDialog>(item, nullptr);
    form->resize(900, 900);
    form->show();
    while (!form->findChild<QTableWidget *>()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    return form;
}

bool holds(const standardModbusEditDialog &form, int points)
{
    return form.findChild<QTableWidget *>()->rowCount() == points;
}

void openTab(benchmark::State &state)
{
    const int points = int(state.range(0));
    const auto item = standardWith(points);
    for (auto _ : state) {
        auto form = opened(item.get());
        state.PauseTiming();
        if (!holds(*form, points)) {
            state.SkipWithError("points are missing");
        }
        form.reset();
        state.ResumeTiming();
    }
}

// The widgets of the rows alone, in the same place and with what they show.
void makeWidgets(benchmark::State &state)
{
    const QIcon icon(QStringLiteral(":/adsdemo/images/Delete.svg"));
    const QStringList types = Choices::list(Choices::dataTypes);
    const QStringList permissions = Choices::list(Choices::permissions);
    const auto empty = standardWith(0);
    for (auto _ : state) {
        state.PauseTiming();
        auto form = opened(empty.get());
        QWidget *parent = form->findChild<QTableWidget *>()->viewport();
        state.ResumeTiming();
        for (int point = 0; point < int(state.range(0)); ++point) {
            for (const QStringList &entries : {types, permissions}) {
                auto *list = new QComboBox(parent);
                list->addItems(entries);
                list->setCurrentText(entries.last());
                list->setToolTip(list->currentText());
            }
            auto *length = new QLineEdit(QStringLiteral("1"), parent);
            length->setFrame(false);
            length->setEnabled(false);
            auto *button = new QPushButton(icon, QString(), parent);
            button->setFixedSize(35, 35);
            button->setToolTip(QStringLiteral("Delete the current row"));
        }
        state.PauseTiming();
        form.reset();
        state.ResumeTiming();
    }
}

// One step of the wheel's smallest kind, up to the painted table.
void scroll(benchmark::State &state)
{
    const auto item = standardWith(int(state.range(0)));
    const auto form = opened(item.get());
    QScrollBar *bar = form->findChild<QTableWidget *>()->verticalScrollBar();
    bar->setValue(0);
    QCoreApplication::processEvents();
    for (auto _ : state) {
        bar->setValue(bar->value() < bar->maximum() ? bar->value() + 1 : 0);
        QCoreApplication::processEvents();
    }
}

bool writeCsv(const QString &path, int points)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    QTextStream stream(&file);
    stream << ParameterVariant::modbus().headers().join(QLatin1Char(',')) << '\n';
    for (int point = 0; point < points; ++point) {
        // The empty field behind the last comma belongs to the button's column.
        for (const QVariant &cell : LargePlant::modbusPoint(point)) {
            stream << cell.toString() << ',';
        }
        stream << '\n';
    }
    return true;
}

void importCsv(benchmark::State &state)
{
    const int points = int(state.range(0));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("points.csv"));
    if (!writeCsv(path, points)) {
        state.SkipWithError("the file can't be written");
    }
    const auto empty = standardWith(0);
    for (auto _ : state) {
        state.PauseTiming();
        auto form = opened(empty.get());
        state.ResumeTiming();
        form->importFile(path);
        QCoreApplication::processEvents();
        state.PauseTiming();
        if (!holds(*form, points)) {
            state.SkipWithError("points are missing");
        }
        form.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(makeWidgets)->Arg(2000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(scroll)->Arg(200)->Arg(5000)->Iterations(150)->Unit(benchmark::kMillisecond);
BENCHMARK(openTab)->Arg(200)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(openTab)->Arg(2000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(importCsv)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

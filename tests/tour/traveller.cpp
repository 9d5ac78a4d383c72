#include "traveller.h"

#include "boxes/boxeditdialog.h"
#include "mainwindow/docking.h"
#include "model/projecttree.h"
#include "standards/standardmodbuseditdialog.h"
#include "trends/trendwindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

Traveller::Traveller(CMainWindow *window)
    : m_window(window)
    , m_folder(qEnvironmentVariable("TOUR_DIR", "tour"))
{
    QDir().mkpath(m_folder);
}

void Traveller::picture(const QString &name, QWidget *dialog)
{
    QCoreApplication::processEvents();
    QPixmap shot = m_window->grab();
    if (dialog) {
        const QPixmap over = dialog->grab();
        const QSize size = over.size() / over.devicePixelRatio();
        QPainter painter(&shot);
        const QPoint at((m_window->width() - size.width()) / 2, (m_window->height() - size.height()) / 2);
        painter.drawPixmap(at, over);
        painter.drawRect(QRect(at, size));
    }
    const QString file = m_folder + QLatin1Char('/') + name + ".png";
    QVERIFY2(shot.save(file), qPrintable(file));
}

void Traveller::scrollTo(QWidget *widget, int below)
{
    for (QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(parent)) {
            area->verticalScrollBar()->setValue(widget->mapTo(area->widget(), QPoint()).y() - below);
            return;
        }
    }
}

void Traveller::widenLiveValues()
{
    constexpr int formWidth = 370; // pixels that are enough for the form of a Box
    ads::CDockManager *docks = m_window->dockManager();
    for (QWidget *parent = form<BoxEditDialog>(); parent; parent = parent->parentWidget()) {
        if (auto *area = qobject_cast<ads::CDockAreaWidget *>(parent)) {
            QList<int> sizes = docks->splitterSizes(area);
            const int last = sizes.size() - 1;
            sizes[last - 1] += sizes.at(last) - formWidth;
            sizes[last] = formWidth;
            docks->setSplitterSizes(area, sizes);
            return;
        }
    }
}

QStandardItem *Traveller::node(const QString &path) const
{
    QStandardItem *item = m_window->projectModel()->invisibleRootItem();
    const QStringList texts = path.split(QLatin1Char('/'));
    for (const QString &text : texts) {
        item = item ? ProjectTree::childNamed(item, text) : nullptr;
    }
    return item;
}

QPoint Traveller::centreOf(const QStandardItem *item) const
{
    m_window->projectTree()->scrollTo(item->index());
    return m_window->projectTree()->visualRect(item->index()).center();
}

void Traveller::click(const QString &path)
{
    QStandardItem *item = node(path);
    QVERIFY2(item, qPrintable(path));
    QTest::mouseClick(m_window->projectTree()->viewport(), Qt::LeftButton, Qt::NoModifier, centreOf(item));
    QCoreApplication::processEvents();
}

void Traveller::choose(const QString &path, const QString &entry, const ModalDialogs::Step &dialog)
{
    QStandardItem *item = node(path);
    QVERIFY2(item, qPrintable(path));
    m_window->projectTree()->setCurrentIndex(item->index());
    bool found = false;
    m_dialogs.expect([&found, &entry](QWidget *menu) {
        const auto actions = menu->actions();
        for (QAction *action : actions) {
            if (action->text() == entry) {
                found = true;
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                                  qobject_cast<QMenu *>(menu)->actionGeometry(action).center());
            }
        }
    });
    if (dialog) {
        m_dialogs.expect(dialog);
    }
    // A request that showed a menu makes the window swallow the next one, so it may take two.
    for (int request = 0; request < 2 && !found; ++request) {
        emit m_window->projectTree()->customContextMenuRequested(centreOf(item));
    }
    QVERIFY2(found, qPrintable(entry));
}

void Traveller::trigger(const char *action)
{
    auto *found = m_window->findChild<QAction *>(QLatin1String(action));
    QVERIFY2(found, action);
    found->trigger();
}

void Traveller::type(const QWidget *form, const char *field, const QString &text)
{
    auto *edit = form->findChild<QLineEdit *>(QLatin1String(field));
    QVERIFY2(edit, field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QCOMPARE(edit->text(), text);
}

void Traveller::press(const QWidget *form, const char *button)
{
    auto *found = form->findChild<QPushButton *>(QLatin1String(button));
    QVERIFY2(found, button);
    found->click();
}

void Traveller::giveFile(const QString &path)
{
    m_dialogs.expect([path](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

void Traveller::addPoints(const standardModbusEditDialog *form, const QVector<QStringList> &points)
{
    for (const QStringList &point : points) {
        press(form, "addButton");
        auto *table = form->findChild<QTableWidget *>();
        const int row = table->rowCount() - 1;
        QTest::keyClicks(table->cellWidget(row, 0), point.at(0));
        QTest::keyClicks(table->cellWidget(row, 1), point.at(1));
        qobject_cast<QComboBox *>(table->cellWidget(row, 2))->setCurrentText(point.at(2));
    }
}

QStringList Traveller::dockLines() const
{
    return m_window->messageEditor()->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QTableWidget *Traveller::liveTable(const QString &title) const
{
    const QTabWidget *tabs = m_window->monitoringTabs();
    for (int index = 0; index < tabs->count(); ++index) {
        if (tabs->tabText(index) == title) {
            return tabs->widget(index)->findChild<QTableWidget *>();
        }
    }
    return nullptr;
}

TrendWindow *Traveller::openTrend()
{
    const QWidget *page = m_window->monitoringTabs()->currentWidget();
    page->findChild<QTableWidget *>()->selectAll();
    page->findChild<QToolButton *>("trendTool")->click();
    auto *trend = form<TrendWindow>();
    if (trend) {
        trend->resize(960, 540);
        for (int step = 0; step < 5; ++step) {
            trend->findChild<QToolButton *>("zoomIn")->click();
        }
    }
    return trend && QTest::qWaitForWindowExposed(trend) ? trend : nullptr;
}

TrendWindow *Traveller::openRecording(const QString &path)
{
    m_dialogs.expect([path](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("file")->setText(path);
        dialog->findChild<QPushButton *>("okButton")->click();
    });
    m_dialogs.expect([](QWidget *picker) { qobject_cast<QDialog *>(picker)->accept(); });
    trigger("actionOpen_Recording");
    const auto isOpen = [this] { return form<TrendWindow>() != nullptr; };
    if (!QTest::qWaitFor(isOpen, 10000)) {
        return nullptr;
    }
    auto *trend = form<TrendWindow>();
    trend->resize(960, 540);
    return QTest::qWaitForWindowExposed(trend) ? trend : nullptr;
}

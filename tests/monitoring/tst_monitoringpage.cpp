#include "messages.h"
#include "modaldialogs.h"
#include "modelwatch.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"
#include "run.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QTableWidget>
#include <QtTest>

namespace {

QVariantMap point(const QString &name, const QString &addr, const QString &valid = "1")
{
    return {{"name", name}, {"addr", addr}, {"dataType", "float"}, {"value", "1.5"}, {"valid", valid}};
}

QVariantList feeders()
{
    return {point("Ua", "40001"), point("Ub", "40003"), point("Ia", "50001", "0")};
}

const QString reportTime = "2026-01-31 10:00:00";

} // namespace

// The filter, the menu and the colours around a table of live values.
class TestMonitoringPage : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_page.reset(); }

    void filterShowsMatchingRows_data();
    void filterShowsMatchingRows();
    void filterHoldsThroughReportsAndSorting();
    void pointsThatComeLaterAreFiltered();
    void emptiedFilterShowsAll();
    void rowsThatAreNotValidAreColoured_data();
    void rowsThatAreNotValidAreColoured();
    void rowsThatAreNotValidAreReadableOnADarkDesktop();
    void valuesAreNotTypedOver();
    void csvHoldsWhatIsShown();
    void csvQuotesWhatWouldTearIt();
    void menuExportsIntoTheChosenFile();
    void exportThatFailsIsTold();
    void pageMayDieBelowItsFileDialog();

private:
    QStringList shownNames() const;
    // The value of the first row as it is drawn.
    QImage drawnValue() const;
    void filter(const QString &text) const { m_filter->setText(text); }
    void report(const QVariantList &rows) const { MonitoringTable::update(m_table, rows, reportTime); }
    // Picks the export from the menu and gives the path in the file dialog.
    void exportTo(const QString &path);

    std::unique_ptr<MonitoringPage> m_page;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_filter = nullptr;
};

void TestMonitoringPage::init()
{
    m_page = std::make_unique<MonitoringPage>();
    m_table = m_page->findChild<QTableWidget *>();
    m_filter = m_page->findChild<QLineEdit *>("filter");
    watchModel(m_table->model());
    report(feeders());
    m_page->resize(700, 300);
    m_page->show();
}

QStringList TestMonitoringPage::shownNames() const
{
    QStringList names;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (!m_table->isRowHidden(row)) {
            names.append(m_table->item(row, MonitoringTable::Name)->text());
        }
    }
    return names;
}

QImage TestMonitoringPage::drawnValue() const
{
    m_table->clearSelection();
    const QRect cell = m_table->visualItemRect(m_table->item(0, MonitoringTable::Value));
    return m_table->viewport()->grab(cell).toImage();
}

void TestMonitoringPage::filterShowsMatchingRows_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("shown");
    const QString ua = "Ua";
    const QString ub = "Ub";
    const QString ia = "Ia";
    QTest::newRow("name") << "Ub" << QStringList{ub};
    QTest::newRow("part of a name, other case") << "A" << QStringList{ua, ia};
    QTest::newRow("address") << "4000" << QStringList{ua, ub};
    QTest::newRow("value is not searched") << "1.5" << QStringList{};
    QTest::newRow("empty") << QString() << QStringList{ua, ub, ia};
}

void TestMonitoringPage::filterShowsMatchingRows()
{
    QFETCH(QString, text);
    QTest::keyClicks(m_filter, text);
    QTEST(shownNames(), "shown");
}

void TestMonitoringPage::filterHoldsThroughReportsAndSorting()
{
    filter("4000");
    m_table->sortByColumn(MonitoringTable::Name, Qt::AscendingOrder); // the hidden row comes to the top
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub"}));
    m_table->sortByColumn(MonitoringTable::Name, Qt::DescendingOrder);
    QCOMPARE(shownNames(), (QStringList{"Ub", "Ua"}));
    report(feeders());
    QCOMPARE(shownNames(), (QStringList{"Ub", "Ua"}));
    report({feeders().at(2), feeders().at(0)});
    QCOMPARE(shownNames(), QStringList{"Ua"});
}

void TestMonitoringPage::pointsThatComeLaterAreFiltered()
{
    filter("4000");
    report(feeders() << point("P", "60001") << point("Uc", "40005"));
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub", "Uc"}));
}

void TestMonitoringPage::emptiedFilterShowsAll()
{
    filter("nothing of this name");
    QCOMPARE(shownNames(), QStringList());
    filter(QString());
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub", "Ia"}));
}

void TestMonitoringPage::rowsThatAreNotValidAreColoured_data()
{
    QTest::addColumn<QString>("valid");
    QTest::addColumn<bool>("coloured");
    QTest::newRow("valid") << "1" << false;
    QTest::newRow("invalid") << "0" << true;
    QTest::newRow("unknown") << "Invalid" << true;
}

void TestMonitoringPage::rowsThatAreNotValidAreColoured()
{
    QFETCH(QString, valid);
    // The other validity first, so that a colour that stayed behind is seen too.
    const QString other = valid == "1" ? QString("0") : "1";
    report({point("Ua", "40001", other)});
    report({point("Ua", "40001", valid)});
    const QImage picture = drawnValue();
    const QColor background = picture.pixelColor(picture.width() - 4, 3);
    QTEST(background == QColor(0xf6, 0xe6, 0xc8), "coloured");
}

void TestMonitoringPage::rowsThatAreNotValidAreReadableOnADarkDesktop()
{
    const QPalette dark(QColor(0x30, 0x30, 0x30)); // with white texts
    QCOMPARE(dark.color(QPalette::Text), QColor(Qt::white));
    m_page->setPalette(dark);
    report({point("Ua", "40001", "0")});
    const QImage picture = drawnValue();
    int darkest = 255;
    for (int x = 2; x < picture.width() - 4; ++x) {
        for (int y = 2; y < picture.height() - 4; ++y) {
            darkest = qMin(darkest, qGray(picture.pixel(x, y)));
        }
    }
    QVERIFY2(darkest < 0x70, qPrintable(QString::number(darkest)));
}

void TestMonitoringPage::valuesAreNotTypedOver()
{
    m_table->setCurrentCell(0, MonitoringTable::Value);
    QTest::keyClick(m_table, Qt::Key_F2);
    QTest::keyClicks(m_table, "9");
    QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, {},
                       m_table->visualItemRect(m_table->currentItem()).center());
    QVERIFY(!m_table->viewport()->findChild<QLineEdit *>());
}

void TestMonitoringPage::csvHoldsWhatIsShown()
{
    filter("4000");
    QCOMPARE(m_page->shownAsCsv(),
             QByteArray("\xef\xbb\xbf"
                        "Name,Addr,DataType,Value,Valid,Update Time\r\n"
                        "Ua,40001,float,1.5,Effective,2026-01-31 10:00:00\r\n"
                        "Ub,40003,float,1.5,Effective,2026-01-31 10:00:00\r\n"));
}

void TestMonitoringPage::csvQuotesWhatWouldTearIt()
{
    report({point("a,b", "say \"x\""), point("two\nlines", "线路"), point("c", "carriage\rreturn")});
    const QByteArray rest = ",float,1.5,Effective,2026-01-31 10:00:00\r\n";
    const QByteArray csv = m_page->shownAsCsv();
    QCOMPARE(csv.mid(csv.indexOf("\r\n") + 2),
             "\"a,b\",\"say \"\"x\"\"\"" + rest + "\"two\nlines\",\xe7\xba\xbf\xe8\xb7\xaf" + rest
                 + "c,\"carriage\rreturn\"" + rest);
}

void TestMonitoringPage::exportTo(const QString &path)
{
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *menu) {
        QCOMPARE(menu->actions().size(), 2);
        QCOMPARE(menu->actions().first()->text(), "Copy");
        qobject_cast<QMenu *>(menu)->setActiveAction(menu->actions().last());
        QTest::keyClick(menu, Qt::Key_Return);
    });
    dialogs.expect([path](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QCOMPARE(dialog->findChild<QLineEdit *>("fileNameEdit")->text(), "Relay.csv");
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        dialog->selectFile(path);
        static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
    });
    m_page->setWindowTitle("Relay");
    emit m_table->customContextMenuRequested(QPoint(5, 5));
    QCOMPARE(dialogs.pending(), 0);
}

void TestMonitoringPage::menuExportsIntoTheChosenFile()
{
    const QString path = QDir::current().filePath("values.csv");
    RUN(exportTo(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), m_page->shownAsCsv());
}

void TestMonitoringPage::exportThatFailsIsTold()
{
    QVERIFY(QDir().mkpath("folder/values.csv"));
    const QString path = QDir::current().filePath("folder/values.csv");
    Messages messages;
    messages.expect();
    RUN(exportTo(path));
    QCOMPARE(messages.told(),
             QStringList{QString("Export Values|The file %1 could not be written.").arg(path)});
}

void TestMonitoringPage::pageMayDieBelowItsFileDialog()
{
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *menu) {
        qobject_cast<QMenu *>(menu)->setActiveAction(menu->actions().last());
        QTest::keyClick(menu, Qt::Key_Return);
    });
    dialogs.expect([this](QWidget *) { m_page.reset(); });
    emit m_table->customContextMenuRequested(QPoint(5, 5));
    QCOMPARE(dialogs.pending(), 0);
    QVERIFY(!m_page);
}

QTEST_MAIN(TestMonitoringPage)
#include "tst_monitoringpage.moc"

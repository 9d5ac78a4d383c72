#include "handframes.h"
#include "messages.h"
#include "searchrows.h"

#include <QComboBox>
#include <QLabel>
#include <QNetworkInterface>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

using HandFrames::foundBox;

// The search dialog without a network: what it lists, when it stops, what it tells.
class TestBoxSearchDialog : public QObject
{
    Q_OBJECT
private slots:
    void beginsWithAnInterfaceThatMayLeadToBoxes();
    void listsABoxOnceByItsAddress();
    void badDatagramLeavesNoTrace();
    void newSearchForgetsTheOldRows();
    void searchWithoutAnswerIsTold();
    void searchWithAnswerEndsInSilence();
    void firstEndOfTwoSearchesStopsTheBroadcasts();
    void interfaceWithoutAddressGoesOnSearching();
    void searchUnderWayIsTold();
    void searchThatSentOnceIsOne();
    void buttonStaysWhereItIs();
    void searchThatCouldNotSendIsTold();
    void dialogMayCloseWhileItsBoxStands();
};

namespace {

QList<QTimer *> endsOf(const BoxSearchDialog &dialog)
{
    return dialog.findChildren<QTimer *>("searchEnd");
}

QTimer *broadcastsOf(const BoxSearchDialog &dialog)
{
    return dialog.findChild<QTimer *>("searchTimer");
}

void take(const BoxSearchDialog &dialog, const QByteArray &datagram)
{
    dialog.findChild<BoxSearch *>()->take(datagram);
}

QString stateOf(const BoxSearchDialog &dialog)
{
    return dialog.findChild<QLabel *>("searchState")->text();
}

// A dialog that broadcasts nothing: it has no interface to do so from.
void silence(const BoxSearchDialog &dialog)
{
    dialog.findChild<QComboBox *>()->clear();
}

} // namespace

void TestBoxSearchDialog::beginsWithAnInterfaceThatMayLeadToBoxes()
{
    const BoxSearchDialog dialog(nullptr);
    const auto *interfaces = dialog.findChild<QComboBox *>();
    const auto isOut = [](const QVariant &each) {
        const auto networkInterface = each.value<QNetworkInterface>();
        bool hasAddress = false;
        const auto entries = networkInterface.addressEntries();
        for (const QNetworkAddressEntry &entry : entries) {
            hasAddress |= entry.ip().protocol() == QAbstractSocket::IPv4Protocol;
        }
        return hasAddress && !networkInterface.flags().testFlag(QNetworkInterface::IsLoopBack);
    };
    bool isThereOne = false;
    for (int index = 0; index < interfaces->count(); ++index) {
        isThereOne |= isOut(interfaces->itemData(index));
    }
    if (!isThereOne) {
        QSKIP("this computer has the loopback alone");
    }
    QVERIFY(isOut(interfaces->currentData()));
}

void TestBoxSearchDialog::listsABoxOnceByItsAddress()
{
    BoxSearchDialog dialog;
    take(dialog, foundBox("192.168.1.70"));
    take(dialog, foundBox("192.168.1.71"));
    take(dialog, foundBox("192.168.1.70"));
    QCOMPARE(rowsOf(dialog),
             (QStringList{"设备IP: 192.168.1.70\n子网掩码: 255.255.255.0\n盒子型号: MRN-GATE-70",
                          "设备IP: 192.168.1.71\n子网掩码: 255.255.255.0\n盒子型号: MRN-GATE-70"}));
}

void TestBoxSearchDialog::badDatagramLeavesNoTrace()
{
    BoxSearchDialog dialog;
    take(dialog, QByteArray());
    take(dialog, foundBox("192.168.1.70").left(37));
    take(dialog, foundBox("192.168.1.70").replace(0, 1, "\x11"));
    take(dialog, foundBox("192.168.1.70").replace(2, 1, QByteArray(1, '\0')));
    QCOMPARE(rowsOf(dialog), QStringList());
}

void TestBoxSearchDialog::newSearchForgetsTheOldRows()
{
    BoxSearchDialog dialog;
    silence(dialog);
    take(dialog, foundBox("192.168.1.70"));
    dialog.findChild<QPushButton *>()->click();
    QCOMPARE(rowsOf(dialog), QStringList());
    take(dialog, foundBox("192.168.1.70"));
    QCOMPARE(rowsOf(dialog).size(), 1);
}

void TestBoxSearchDialog::searchWithoutAnswerIsTold()
{
    Messages messages;
    messages.expect();
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.searchForBoxes();
    QCOMPARE(endsOf(dialog).size(), 1);
    QCOMPARE(endsOf(dialog).first()->interval(), 10000);
    QCOMPARE(broadcastsOf(dialog)->interval(), 1000);
    QVERIFY(broadcastsOf(dialog)->isActive());
    endsOf(dialog).first()->start(1);
    QTRY_COMPARE(messages.told(), QStringList{"No Devices Found|No devices were found during the search."});
    QVERIFY(!broadcastsOf(dialog)->isActive());
}

void TestBoxSearchDialog::searchWithAnswerEndsInSilence()
{
    Messages messages;
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.searchForBoxes();
    take(dialog, foundBox("192.168.1.70"));
    endsOf(dialog).first()->start(1);
    QTRY_VERIFY(!broadcastsOf(dialog)->isActive());
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(rowsOf(dialog).size(), 1);
}

void TestBoxSearchDialog::firstEndOfTwoSearchesStopsTheBroadcasts()
{
    Messages messages;
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.searchForBoxes();
    dialog.searchForBoxes();
    take(dialog, foundBox("192.168.1.70"));
    QCOMPARE(endsOf(dialog).size(), 2);
    endsOf(dialog).first()->start(1);
    QTRY_VERIFY(!broadcastsOf(dialog)->isActive());
    QTRY_COMPARE(endsOf(dialog).size(), 1);
}

void TestBoxSearchDialog::interfaceWithoutAddressGoesOnSearching()
{
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.searchForBoxes();
    QTest::ignoreMessage(QtDebugMsg, "No IPv4 address found for selected network interface!");
    dialog.sendSearchBroadcast();
    QVERIFY(broadcastsOf(dialog)->isActive());
    QCOMPARE(stateOf(dialog), "Nothing was searched: there is no IPv4 address to search from.");
}

void TestBoxSearchDialog::searchUnderWayIsTold()
{
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.searchForBoxes();
    QCOMPARE(stateOf(dialog), "Searching for ten seconds...");
    take(dialog, foundBox("192.168.1.70"));
    endsOf(dialog).first()->start(1);
    QTRY_COMPARE(stateOf(dialog), "The search has ended before anything was sent.");
}

// One broadcast that went out is a search, whatever became of the others.
void TestBoxSearchDialog::searchThatSentOnceIsOne()
{
    BoxSearchDialog dialog;
    silence(dialog);
    auto *search = dialog.findChild<BoxSearch *>();
    const QHostAddress address("192.168.1.5");
    dialog.searchForBoxes();
    emit search->failed(address, "busy");
    emit search->sent();
    QCOMPARE(stateOf(dialog), "Searching for ten seconds...");
    emit search->failed(address, "busy");
    QCOMPARE(stateOf(dialog), "Searching for ten seconds...");
    take(dialog, foundBox("192.168.1.70"));
    endsOf(dialog).first()->start(1);
    QTRY_COMPARE(stateOf(dialog), "The search has ended. Boxes found: 1.");
}

void TestBoxSearchDialog::buttonStaysWhereItIs()
{
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.resize(dialog.minimumSize());
    dialog.show();
    auto *button = dialog.findChild<QPushButton *>();
    const int before = button->y();
    button->click();
    emit dialog.findChild<BoxSearch *>()->failed(QHostAddress("192.168.1.5"),
                                                 "The bound address is already in use");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCOMPARE(button->y(), before);
}

void TestBoxSearchDialog::searchThatCouldNotSendIsTold()
{
    Messages messages;
    messages.expect();
    BoxSearchDialog dialog;
    silence(dialog);
    dialog.searchForBoxes();
    emit dialog.findChild<BoxSearch *>()->failed(QHostAddress("192.168.1.5"), "Permission denied");
    const QString failure =
        "Nothing was searched: 192.168.1.5 could not send from UDP port 5 (Permission denied).";
    QCOMPARE(stateOf(dialog), failure);
    endsOf(dialog).first()->start(1);
    QTRY_COMPARE(messages.told().size(), 1);
    QCOMPARE(stateOf(dialog), failure);
}

void TestBoxSearchDialog::dialogMayCloseWhileItsBoxStands()
{
    const UnwatchedModals closedBelow;
    QPointer<BoxSearchDialog> dialog = new BoxSearchDialog;
    silence(*dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
    dialog->searchForBoxes();
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&] {
        if (qApp->activeModalWidget() && dialog) {
            dialog->close();
        }
    });
    closer.start(1);
    endsOf(*dialog).first()->start(1);
    QTRY_VERIFY(!dialog);
    QVERIFY(!qApp->activeModalWidget());
}

QTEST_MAIN(TestBoxSearchDialog)
#include "tst_boxsearchdialog.moc"

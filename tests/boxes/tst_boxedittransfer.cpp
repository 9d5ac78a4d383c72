#include "boxpushtest.h"

#include "boxes/hostaddressdialog.h"
#include "logtail.h"
#include "model/itemroles.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHostAddress>
#include <QJsonDocument>
#include <QLineEdit>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTimer>
#include <QtTest>

// The uploads that a Box form starts, and its death at every moment of waiting.
class TestBoxEditTransfer : public BoxPushTest
{
    Q_OBJECT
public:
    TestBoxEditTransfer()
        : BoxPushTest("127.0.11.6")
    {
    }

private slots:
    void projectIsPushed();
    void projectPushNeedsAProject();
    void projectPushNeedsATempFile_data();
    void projectPushNeedsATempFile();
    void unreachableBoxIsToldAndTempFileStays();
    void programIsPushed();
    void programPushCanBeCancelled();
    void missingProgramIsTold();
    void timeoutIsToldInABoxAndInTheDock();
    void transferTakesTheHostAddress();
    void sessionLivesOnDuringATransfer();
    void updateProjectAgainDuringTheWait();
    void formMayDie_data();
    void formMayDie();
};

void TestBoxEditTransfer::projectIsPushed()
{
    QStandardItem *project = addProject();
    const QByteArray document = QJsonDocument(m_workspace->buildProjectJson(project)).toJson();
    QVERIFY(!document.isEmpty() && document.size() < 1024);
    // What a push that failed has left is written over.
    QFile left(m_dir->filePath("temp.json"));
    QVERIFY(left.open(QIODevice::WriteOnly) && left.resize(4096));
    left.close();
    open();
    QVERIFY(connected());
    answerTransferWith(QByteArray::fromHex("12340300 0a00 03 00 5678"));
    const LogTail log("BoxEditDialog");
    click("updateProjectButton");
    QCOMPARE(m_workspace->messages, QStringList("Checksum Result:Checksum successful."));
    QCOMPARE(log.events(), QStringList("BoxEditDialog: updateProject"));
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 100);
    QCOMPARE(filesInFolder(), QStringList());
    // One chunk: 17 bytes, the document, 2 bytes; then the digest's frame.
    QCOMPARE(m_box->received(1).left(4).toHex(), QByteArray("12340300"));
    QCOMPARE(m_box->received(1).mid(17, document.size()), document);
    QCOMPARE(m_box->received(1).size(), 17 + document.size() + 2 + 30);
}

void TestBoxEditTransfer::projectPushNeedsAProject()
{
    open();
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    m_form->updateProject();
    delete m_form;
    m_form = new BoxEditDialog(m_item, nullptr);
    QTest::ignoreMessage(QtDebugMsg, "No project selected.");
    m_form->updateProject();
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditTransfer::projectPushNeedsATempFile_data()
{
    QTest::addColumn<bool>("full");
    QTest::newRow("folder is not there") << false;
    QTest::newRow("disk is full") << true;
}

void TestBoxEditTransfer::projectPushNeedsATempFile()
{
    QFETCH(bool, full);
    QStandardItem *project = addProject();
    if (full) {
        if (!QFile::exists("/dev/full")) {
            QSKIP("no device that is always full");
        }
        QVERIFY(QFile::link("/dev/full", m_dir->filePath("temp.json")));
    } else {
        project->setData(m_dir->filePath("nowhere"), projectPathRole);
    }
    open();
    QVERIFY(connected());
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Could not create temp file: \".+\"$"));
    m_form->updateProject();
    QCOMPARE(m_workspace->messages, QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(m_box->count(), 1);
}

void TestBoxEditTransfer::unreachableBoxIsToldAndTempFileStays()
{
    addProject();
    m_item->setData("127.0.11.9", // nobody listens there
                    boxIpRole);
    open();
    m_form->updateProject();
    QCOMPARE(m_workspace->messages,
             QStringList("Connection Status:Failed to connect to server for program update."));
    QCOMPARE(filesInFolder(), QStringList("temp.json"));
}

void TestBoxEditTransfer::programIsPushed()
{
    QFile program(m_dir->filePath("gate.bin"));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("a");
    program.close();
    open();
    QVERIFY(connected());
    answerTransferWith(QByteArray::fromHex("12340400 0a00 03 01 5678"));
    m_dialogs->expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), "Select Program File");
        QCOMPARE(dialog->directory().path(), QDir::homePath());
        QCOMPARE(dialog->nameFilters(), (QStringList{"Program Files (*.bin)", "All Files (*.*)"}));
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(program.fileName());
        static_cast<QDialog *>(dialog)->accept();
    });
    const LogTail log("BoxEditDialog");
    click("updateProgramButton");
    QCOMPARE(m_workspace->messages, QStringList("Checksum Result:Checksum failed."));
    QCOMPARE(log.events(), QStringList("BoxEditDialog: updateProgram"));
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 0);
    QCOMPARE(m_box->received(1).toHex(),
             QByteArray::fromHex("12340400 1400 01 01000000 0100 01000000 61 5678"
                                 "12340400 1e00 02 01000000 10 0cc175b9c0f1b6a831c399e269772661 5678")
                 .toHex());
    QVERIFY(QFile::exists(program.fileName()));
    QCOMPARE(outcome("programOutcome"),
             "FAILED: 'gate.bin' to 127.0.11.6: the Box says that the checksum is wrong.");
    QCOMPARE(outcome(), "none: ");
}

void TestBoxEditTransfer::programPushCanBeCancelled()
{
    open();
    QVERIFY(connected());
    m_dialogs->expect([](QWidget *dialog) { static_cast<QDialog *>(dialog)->reject(); });
    m_form->updateProgram();
    QCOMPARE(m_workspace->messages, QStringList());
    QCOMPARE(m_box->count(), 1);
}

void TestBoxEditTransfer::missingProgramIsTold()
{
    QFile program(m_dir->filePath("gate.bin"));
    QVERIFY(program.open(QIODevice::WriteOnly));
    open();
    QVERIFY(connected());
    m_dialogs->expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        connect(dialog, &QDialog::accepted, this, [&program] { program.remove(); });
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(program.fileName());
        static_cast<QDialog *>(dialog)->accept();
    });
    m_messages->expect();
    m_form->updateProgram();
    QCOMPARE(m_messages->told(), QStringList("Error|Failed to open program file."));
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestBoxEditTransfer::timeoutIsToldInABoxAndInTheDock()
{
    addProject();
    open();
    TransferTimeouts timeouts;
    timeouts.verdict = 20;
    m_form->setTransferTimeouts(timeouts);
    const LogTail log("BoxEditDialog");
    m_messages->expect();
    m_form->updateProject();
    QCOMPARE(m_messages->told(), QStringList("Timeout|Timeout while waiting for checksum result."));
    QCOMPARE(m_workspace->messages, QStringList("Timeout:Timeout while waiting for checksum result."));
    QCOMPARE(find<QProgressBar>("progressBar")->value(), 0);
    QCOMPARE(log.events(), QStringList());
    QCOMPARE(filesInFolder(), QStringList());
}

void TestBoxEditTransfer::transferTakesTheHostAddress()
{
    addProject();
    open();
    chooseHostAddress("192.0.2.1");
    m_workspace->messages.clear();
    m_form->updateProject();
    QCOMPARE(m_workspace->messages, QStringList("Binding Status: Failed to bind to 192.0.2.1"));
    QCOMPARE(filesInFolder(), QStringList("temp.json"));
}

void TestBoxEditTransfer::sessionLivesOnDuringATransfer()
{
    addProject();
    open();
    QVERIFY(connected());
    m_box->heard = [this](int index) {
        if (index == 1) {
            m_messages->expect();
            m_box->send(0, jsonAnswer(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})"));
            m_box->heard = nullptr;
            connect(m_form->protocol(), &Protocol::NTPAllocationDataReceived, m_box.get(),
                    [this] { m_box->send(1, QByteArray::fromHex("12340300 0a00 03 00 5678")); });
        }
    };
    m_form->updateProject();
    QCOMPARE(shown("ntpServer"), "4.1.1.1");
    QCOMPARE(m_workspace->messages, QStringList("Checksum Result:Checksum successful."));
}

void TestBoxEditTransfer::updateProjectAgainDuringTheWait()
{
    addProject();
    open();
    QVERIFY(connected());
    m_box->heard = [this](int index) {
        if (index == 1) {
            m_box->heard = [this](int second) {
                if (second == 2) {
                    m_box->heard = nullptr;
                    m_box->send(1, QByteArray::fromHex("12340300 0a00 03 01 5678"));
                    m_box->send(2, QByteArray::fromHex("12340300 0a00 03 00 5678"));
                }
            };
            QTimer::singleShot(0, m_form, [this] { click("updateProjectButton"); });
        }
    };
    click("updateProjectButton");
    QCOMPARE(m_workspace->messages,
             (QStringList{"Checksum Result:Checksum successful.", "Checksum Result:Checksum failed."}));
    QCOMPARE(filesInFolder(), QStringList());
}

void TestBoxEditTransfer::formMayDie_data()
{
    QTest::addColumn<QByteArray>("moment");
    for (const char *moment :
         {"while connecting", "after the link broke", "when it disconnects", "when it connects anew",
          "below an update's box", "below a write's box", "below a binding failure's box",
          "below the host address dialog", "below the file dialog", "while the verdict is awaited",
          "below the time-out's box"}) {
        QTest::newRow(moment) << QByteArray(moment);
    }
}

void TestBoxEditTransfer::formMayDie()
{
    QFETCH(QByteArray, moment);
    addProject();
    open();
    if (moment == "while connecting") {
        delete m_form;
        QTRY_VERIFY(!m_form);
        return;
    }
    QVERIFY(connected());
    const auto kill = [this] { m_form->deleteLater(); };
    if (moment == "after the link broke") {
        m_box->link(0)->abort();
        QTRY_COMPARE(status(), "Connection status: Disconnected");
        delete m_form;
    } else if (moment == "when it disconnects" || moment == "when it connects anew") {
        connect(m_form->protocol(), &Protocol::connectionStatusChanged, m_box.get(),
                [this] { delete m_form; });
        if (moment == "when it disconnects") {
            m_form->disconnectFromServer();
        } else {
            m_form->connectToServer();
        }
    } else if (moment == "below an update's box") {
        actBelowTheNextMessage(kill);
        answer(jsonAnswer(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})"));
    } else if (moment == "below a write's box") {
        // That box has no parent: it is left after the form has gone.
        actBelowTheNextMessage(kill);
        answer(jsonAnswer(R"({"type":"108","code":"200"})") + jsonAnswer(R"({"type":"109","code":"200"})"));
    } else if (moment == "below a binding failure's box") {
        m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
        m_form->showChangeHostAddressDialog();
        m_form->protocol()->closeConnection();
        actBelowTheNextMessage(kill);
        m_form->protocol()->bindToAddress(QHostAddress("192.0.2.1"));
    } else if (moment == "below the host address dialog") {
        m_dialogs->expect([this](QWidget *) { delete m_form; });
        m_form->showChangeHostAddressDialog();
    } else if (moment == "below the file dialog") {
        m_dialogs->expect([this](QWidget *) { delete m_form; });
        m_form->updateProgram();
    } else if (moment == "while the verdict is awaited") {
        m_box->heard = [this](int index) {
            if (index == 1) {
                m_form->deleteLater();
            }
        };
        m_form->updateProject();
    } else if (moment == "below the time-out's box") {
        TransferTimeouts timeouts;
        timeouts.verdict = 20;
        m_form->setTransferTimeouts(timeouts);
        actBelowTheNextMessage(kill);
        m_form->updateProject();
    }
    QTRY_VERIFY(!m_form);
    QCOMPARE(m_workspace->messages, QStringList());
}

QTEST_MAIN(TestBoxEditTransfer)
#include "tst_boxedittransfer.moc"

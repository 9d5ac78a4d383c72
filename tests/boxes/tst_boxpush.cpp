#include "boxpushtest.h"
#include "model/itemroles.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QProgressBar>
#include <QTimer>
#include <QtTest>

namespace {

// Keeps the text of a label each time it is painted.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QLabel *label)
        : m_label(label)
    {
        label->installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            painted = m_label->text();
            hadRoom = m_label->heightForWidth(m_label->width()) <= m_label->height();
        }
        return QObject::eventFilter(watched, event);
    }

    QString painted;
    bool hadRoom = false; // for all of it

private:
    QLabel *m_label;
};

Qt::CursorShape cursorNow()
{
    const QCursor *cursor = QGuiApplication::overrideCursor();
    return cursor ? cursor->shape() : Qt::ArrowCursor;
}

} // namespace

// What a Box form shows of a push, before and after, and what the push leaves on the disk.
class TestBoxPush : public BoxPushTest
{
    Q_OBJECT
public:
    TestBoxPush()
        : BoxPushTest("127.0.11.8")
    {
    }

private slots:
    void tempFileIsForItsOwnerAlone_data();
    void tempFileIsForItsOwnerAlone();
    void endOfAPushIsKept_data();
    void endOfAPushIsKept();
    void pushThatCannotBeginIsKept();
    void laterPushKeepsTheLine_data();
    void laterPushKeepsTheLine();
    void lineIsOnTheScreenWhileTheWindowIsBlocked();
    void nothingIsCertainBeforeTheVerdict();
    void lineIsOnlyAsHighAsItsText();
    void messageHasNoWaitCursor();

private:
    // Pushes the project. The function runs once all of it was sent, before the Box gives its verdict.
    void push(const std::function<void()> &beforeTheVerdict);
};

void TestBoxPush::push(const std::function<void()> &beforeTheVerdict)
{
    bool isDone = false;
    m_box->heard = [&](int index) {
        if (index == 1 && !isDone) {
            isDone = true;
            beforeTheVerdict();
            m_box->send(index, QByteArray::fromHex("12340300 0a00 03 00 5678"));
        }
    };
    m_form->updateProject();
    m_box->heard = nullptr;
}

void TestBoxPush::tempFileIsForItsOwnerAlone_data()
{
    QTest::addColumn<bool>("old"); // one is there that all may read
    QTest::newRow("new") << false;
    QTest::newRow("there") << true;
}

void TestBoxPush::tempFileIsForItsOwnerAlone()
{
#ifndef Q_OS_UNIX
    QSKIP("files have no modes here");
#endif
    QFETCH(bool, old);
    addProject();
    QFile left(m_dir->filePath("temp.json"));
    if (old) {
        QVERIFY(left.open(QIODevice::WriteOnly));
        left.close();
        QVERIFY(left.setPermissions(QFile::Permissions(0x6044)));
    }
    m_item->setData("127.0.11.9", // nobody listens there
                    boxIpRole);
    open();
    m_form->updateProject();
    constexpr int ofTheUser = 0x0700;
    QCOMPARE(int(left.permissions()) & ~ofTheUser, int(QFile::ReadOwner | QFile::WriteOwner));
}

void TestBoxPush::endOfAPushIsKept_data()
{
    QTest::addColumn<QByteArray>("verdict");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("isRed");
    const auto row = [](const char *name, const char *hex, const char *expected, bool isRed) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << QString::fromLatin1(expected) << isRed;
    };
    row("good", "12340300 0a00 03 00 5678",
        "'plant' is on 127.0.11.8. The verdict of the Box: checksum successful.", false);
    row("bad checksum", "12340300 0a00 03 01 5678",
        "FAILED: 'plant' to 127.0.11.8: the Box says that the checksum is wrong.", true);
    row("of a program", "12340400 0a00 03 00 5678",
        "FAILED: 'plant' to 127.0.11.8: the Box gave the verdict on something else.", true);
    row("of another kind", "12340300 0a00 02 00 5678",
        "FAILED: 'plant' to 127.0.11.8: the Box gave the verdict on something else.", true);
    row("cut off", "12340300 0a00 03",
        "FAILED: 'plant' to 127.0.11.8: the Box gave no whole verdict, so nobody knows what it has.", true);
    row("late", "",
        "FAILED: 'plant' to 127.0.11.8: the Box gave no verdict in time, so nobody knows what it has.", true);
}

void TestBoxPush::endOfAPushIsKept()
{
    QFETCH(QByteArray, verdict);
    QFETCH(QString, expected);
    QFETCH(bool, isRed);
    addProject();
    open();
    QVERIFY(connected());
    QCOMPARE(outcome(), "none: ");
    if (verdict.isEmpty()) {
        TransferTimeouts timeouts;
        timeouts.verdict = 20;
        m_form->setTransferTimeouts(timeouts);
        m_messages->expect();
    } else {
        answerTransferWith(verdict);
    }
    m_form->updateProject();
    QCOMPARE(outcome(), expected);
    QCOMPARE(outcome("programOutcome"), "none: ");
    const QColor color = find<QLabel>("projectOutcome")->palette().color(QPalette::WindowText);
    QCOMPARE(color != m_form->palette().color(QPalette::WindowText), isRed);
    // It stays when the form turns to another Box, and names the one that it was.
    m_form->replaceItem(m_item);
    QCOMPARE(outcome(), expected);
}

void TestBoxPush::pushThatCannotBeginIsKept()
{
    open();
    m_form->updateProject();
    QCOMPARE(outcome(), "FAILED: 'no project' to 127.0.11.8: no node is selected in the tree.");
    QStandardItem *project = addProject();
    find<QLineEdit>("ip")->setText("127.0.11.9"); // nobody listens there
    m_form->updateProject();
    QCOMPARE(outcome(), "FAILED: 'plant' to 127.0.11.9: no connection to the Box.");
    project->setData(m_dir->filePath("nowhere"), projectPathRole);
    m_form->updateProject();
    QCOMPARE(outcome(), "FAILED: 'plant' to 127.0.11.9: the file temp.json could not be written.");
    project->setData(m_dir->path(), projectPathRole);
    chooseHostAddress("192.0.2.1");
    m_form->updateProject();
    QCOMPARE(outcome(),
             "FAILED: 'plant' to 127.0.11.9: this computer does not have the chosen host address.");
}

void TestBoxPush::laterPushKeepsTheLine_data()
{
    QTest::addColumn<bool>("hasProject");
    QTest::addColumn<QString>("expected");
    QTest::newRow("without a transfer")
        << false << "FAILED: 'no project' to 127.0.11.9: no node is selected in the tree.";
    QTest::newRow("with a transfer") << true << "FAILED: 'plant' to 127.0.11.9: no connection to the Box.";
}

// The user presses again while the first push waits for its verdict.
void TestBoxPush::laterPushKeepsTheLine()
{
    QFETCH(bool, hasProject);
    QFETCH(QString, expected);
    addProject();
    open();
    QVERIFY(connected());
    QString inBetween;
    push([&] {
        find<QLineEdit>("ip")->setText("127.0.11.9"); // nobody listens there
        m_workspace->current = hasProject ? m_workspace->current : nullptr;
        m_form->updateProject();
        inBetween = outcome();
    });
    QCOMPARE(inBetween, expected);
    QCOMPARE(outcome(), expected);
}

void TestBoxPush::lineIsOnTheScreenWhileTheWindowIsBlocked()
{
    QStandardItem *project = addProject();
    open();
    QVERIFY(connected());
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form));
    answerTransferWith(QByteArray::fromHex("12340300 0a00 03 00 5678"));
    const PaintWatch watch(find<QLabel>("projectOutcome"));
    QString painted;
    bool hadRoom = false;
    Qt::CursorShape blocked = Qt::BlankCursor;
    Qt::CursorShape waiting = Qt::BlankCursor;
    connect(find<QProgressBar>("progressBar"), &QProgressBar::valueChanged, m_box.get(), [&] {
        painted = watch.painted;
        hadRoom = watch.hadRoom;
        blocked = cursorNow();
        QTimer::singleShot(0, m_box.get(), [&waiting] { waiting = cursorNow(); });
    });
    m_form->updateProject();
    QCOMPARE(painted.mid(21), "pushing 'plant' to 127.0.11.8...");
    QVERIFY(hadRoom);
    QCOMPARE(blocked, Qt::WaitCursor);
    QCOMPARE(waiting, Qt::ArrowCursor);
    QCOMPARE(cursorNow(), Qt::ArrowCursor);
    // A line that needs more room than the one before.
    const QString name = QString("plant ").repeated(20);
    project->setText(name);
    m_form->updateProject();
    QCOMPARE(painted.mid(21), "pushing '" + name + "' to 127.0.11.8...");
    QVERIFY(hadRoom);
}

// The progress bar is full by then.
void TestBoxPush::nothingIsCertainBeforeTheVerdict()
{
    addProject();
    open();
    QVERIFY(connected());
    QString inBetween;
    push([&] { inBetween = outcome(); });
    QCOMPARE(inBetween, "all of 'plant' was sent to 127.0.11.8, whose verdict is still to come...");
    QCOMPARE(outcome(), "'plant' is on 127.0.11.8. The verdict of the Box: checksum successful.");
}

void TestBoxPush::lineIsOnlyAsHighAsItsText()
{
    open();
    m_form->resize(300, 700);
    m_form->show();
    m_form->updateProject(); // of no project
    const auto *line = find<QLabel>("projectOutcome");
    const auto oneLine = line->fontMetrics().height();
    QTRY_VERIFY(line->height() > 2 * oneLine);
    m_form->resize(1400, 700);
    QTRY_VERIFY(line->height() < 2 * oneLine);
}

void TestBoxPush::messageHasNoWaitCursor()
{
    addProject();
    open();
    QVERIFY(connected());
    TransferTimeouts timeouts;
    timeouts.verdict = 600; // long after the first message
    m_form->setTransferTimeouts(timeouts);
    // One of the session's in the midst of the wait, and the one at its end.
    QVector<Qt::CursorShape> shapes;
    m_box->heard = [this](int index) {
        if (index == 1) {
            m_box->heard = nullptr;
            m_box->send(0, jsonAnswer(R"({"type":"8","pares":{"NTP":"4.1.1.1"}})"));
        }
    };
    m_unwatched = std::make_unique<UnwatchedModals>();
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&shapes] {
        if (QWidget *message = QApplication::activeModalWidget()) {
            shapes.append(cursorNow());
            message->close();
        }
    });
    watch.start(1);
    m_form->updateProject();
    QCOMPARE(shapes, (QVector<Qt::CursorShape>{Qt::ArrowCursor, Qt::ArrowCursor}));
}

QTEST_MAIN(TestBoxPush)
#include "tst_boxpush.moc"

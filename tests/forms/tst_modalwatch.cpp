#include "formtest.h"

#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QTableView>

// Tests that are to fail, each run in a program of its own.
class Misbehaving : public FormTest
{
    Q_OBJECT
public:
    Misbehaving()
        : FormTest("item", Qt::UserRole, QString())
    {
    }
private slots:
    void message() { QMessageBox::question(nullptr, "Title", "Text"); }
    void otherButton()
    {
        m_messages->expect(QMessageBox::Yes);
        QMessageBox::information(nullptr, "Title", "Text");
    }
    void missingMessage() { m_messages->expect(); }
    void dialog()
    {
        QDialog dialog;
        dialog.setWindowTitle("Title");
        dialog.exec();
    }
    void openDialog()
    {
        m_dialogs->expect([](QWidget *) {});
        dialog();
    }
    void menu() { QMenu("Title").exec(); }
    void helper()
    {
        RUN([] { QVERIFY2(false, "once"); }());
        QFAIL("went on");
    }
    void model()
    {
        setModelsChecked(true); // also where it is off by default
        // Tells of a row that never comes.
        class Model : public QStandardItemModel
        {
        public:
            void lie()
            {
                beginInsertRows({}, 0, 0);
                endInsertRows();
            }
        } model;
        QTableView view;
        view.setModel(&model);
        view.setWindowTitle("any event");
        view.show();
        model.lie();
    }
};

// What the tests of forms may rely on: they fail by themselves on what they did not expect.
class TestModalWatch : public QObject
{
    Q_OBJECT
private slots:
    void testFails_data();
    void testFails();
};

void TestModalWatch::testFails_data()
{
    QTest::addColumn<QByteArray>("failure");
    QTest::newRow("message") << QByteArray("unexpected: QMessageBox|Title|Text");
    QTest::newRow("otherButton") << QByteArray("unexpected: QMessageBox|Title|Text");
    QTest::newRow("missingMessage") << QByteArray("not every expected message or dialog came");
    QTest::newRow("dialog") << QByteArray("unexpected: QDialog|Title");
    QTest::newRow("openDialog") << QByteArray("unexpected: QDialog|Title");
    QTest::newRow("menu") << QByteArray("unexpected: QMenu|");
    QTest::newRow("helper") << QByteArray("'false' returned FALSE. (once)");
    QTest::newRow("model") << QByteArray("rowCount");
}

void TestModalWatch::testFails()
{
    QFETCH(QByteArray, failure);
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(),
                  {"misbehave", QString::fromLatin1(QTest::currentDataTag())});
    QVERIFY(process.waitForFinished());
    QVERIFY(process.exitCode() > 0); // the number of failures
    const QByteArray output = process.readAllStandardOutput();
    QVERIFY2(output.contains(failure), output.constData());
    QVERIFY(!output.contains("went on"));
}

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "misbehave") == 0) {
        Misbehaving tests;
        return QTest::qExec(&tests, argc - 1, argv + 1);
    }
    TestModalWatch tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "tst_modalwatch.moc"

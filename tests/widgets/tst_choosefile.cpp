#include "widgets/choosefile.h"

#include "files.h"
#include "messages.h"
#include "modaldialogs.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QtTest>

#include <memory>

// The questions for a file to open and for one to save.
class TestChooseFile : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void givesTheChosenPath_data() { questions(); }
    void givesTheChosenPath();
    void givesNothingWhenCancelled_data() { questions(); }
    void givesNothingWhenCancelled();
    void givesNothingWhenTheParentDiesBelow_data() { questions(); }
    void givesNothingWhenTheParentDiesBelow();
    void asksAsItIsTold_data() { questions(); }
    void asksAsItIsTold();
    void keepsTheFolderOfTheLastFile_data() { questions(); }
    void keepsTheFolderOfTheLastFile();
    void offersANameThatAnyFileMayHave();
    void longNamesAreCut();
    void addsTheEndingThatWasNotTyped_data();
    void addsTheEndingThatWasNotTyped();
    void asksAboutAFileThatIsReplaced_data();
    void asksAboutAFileThatIsReplaced();
    void addsTheEndingOfTheChosenFilter();

private:
    static void questions();
    // The answer to the question of the data row.
    QString ask() const;

    std::unique_ptr<QWidget> m_parent;
    std::unique_ptr<ModalDialogs> m_dialogs;
};

void TestChooseFile::init()
{
    m_parent = std::make_unique<QWidget>();
    m_dialogs = std::make_unique<ModalDialogs>();
}

// Whatever the answer was, no dialog stays behind.
void TestChooseFile::cleanup()
{
    QCOMPARE(m_dialogs->pending(), 0);
    QTRY_VERIFY(!m_parent || m_parent->children().isEmpty());
}

void TestChooseFile::questions()
{
    QTest::addColumn<bool>("saves");
    QTest::newRow("open") << false;
    QTest::newRow("save") << true;
}

QString TestChooseFile::ask() const
{
    QFETCH(bool, saves);
    const QString caption = "Caption";
    const QString filter = "Texts (*.txt)";
    return saves ? chooseSaveFile(m_parent.get(), caption, QDir::currentPath(), filter)
                 : chooseOpenFile(m_parent.get(), caption, QDir::currentPath(), filter);
}

void TestChooseFile::givesTheChosenPath()
{
    const QString path = Files::put("chosen.txt", "x");
    m_dialogs->expect([&path](QWidget *dialog) {
        qobject_cast<QFileDialog *>(dialog)->selectFile(path);
        static_cast<QDialog *>(qobject_cast<QFileDialog *>(dialog))->done(QDialog::Accepted);
    });
    QCOMPARE(ask(), path);
}

void TestChooseFile::givesNothingWhenCancelled()
{
    const QString path = Files::put("chosen.txt", "x");
    m_dialogs->expect([&path](QWidget *dialog) {
        qobject_cast<QFileDialog *>(dialog)->selectFile(path);
        dialog->close();
    });
    QCOMPARE(ask(), QString());
}

void TestChooseFile::givesNothingWhenTheParentDiesBelow()
{
    m_dialogs->expect([this](QWidget *) { m_parent.reset(); });
    QCOMPARE(ask(), QString());
}

void TestChooseFile::asksAsItIsTold()
{
    QFETCH(bool, saves);
    m_dialogs->expect([saves](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QCOMPARE(dialog->windowTitle(), "Caption");
        QCOMPARE(dialog->directory().path(), QDir::currentPath());
        QCOMPARE(dialog->nameFilters(), QStringList{"Texts (*.txt)"});
        QCOMPARE(dialog->acceptMode(), saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        QCOMPARE(dialog->fileMode(), saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        dialog->close();
    });
    ask();
}

void TestChooseFile::keepsTheFolderOfTheLastFile()
{
    const QString folder = QDir::current().filePath(QLatin1String(QTest::currentDataTag()));
    QVERIFY(QDir().mkpath(folder));
    m_dialogs->expect([&folder](QWidget *dialog) {
        qobject_cast<QFileDialog *>(dialog)->selectFile(Files::put(folder + "/chosen.txt", "x"));
        static_cast<QDialog *>(qobject_cast<QFileDialog *>(dialog))->done(QDialog::Accepted);
    });
    ask();
    QCOMPARE(lastUsedFolder(), folder);
    m_dialogs->expect([](QWidget *dialog) { dialog->close(); });
    ask();
    QCOMPARE(lastUsedFolder(), folder);
}

void TestChooseFile::offersANameThatAnyFileMayHave()
{
    m_dialogs->expect([](QWidget *dialog) {
        QCOMPARE(dialog->findChild<QLineEdit *>("fileNameEdit")->text(), "Pump 1_2_ north_.txt");
        dialog->close();
    });
    chooseSaveFile(m_parent.get(), "Caption", QDir::currentPath(), "Texts (*.txt)", "Pump 1/2: north?");
}

// No file system takes more than 255 bytes.
void TestChooseFile::longNamesAreCut()
{
    const QString word = QString::fromUtf8("\xF0\xA0\x80\x80"); // four bytes, two characters
    QCOMPARE(asFileName(QString(300, QChar('x'))), QString(200, QChar('x')));
    QCOMPARE(asFileName('x' + word.repeated(100)), 'x' + word.repeated(49));
    QCOMPARE(asFileName(word.repeated(50)), word.repeated(50));
}

void TestChooseFile::addsTheEndingThatWasNotTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("none") << "values"
                          << "values.txt";
    QTest::newRow("its own") << "values.txt"
                             << "values.txt";
    QTest::newRow("another") << "values.csv"
                             << "values.csv";
}

void TestChooseFile::addsTheEndingThatWasNotTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, chosen);
    m_dialogs->expect([&typed](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(typed);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QCOMPARE(chooseSaveFile(m_parent.get(), "Caption", QDir::currentPath(), "Texts (*.txt)", "offered"),
             QDir::current().filePath(chosen));
}

void TestChooseFile::asksAboutAFileThatIsReplaced_data()
{
    QTest::addColumn<bool>("grows");
    QTest::newRow("replaced") << false;
    QTest::newRow("added to") << true;
}

void TestChooseFile::asksAboutAFileThatIsReplaced()
{
    QFETCH(bool, grows);
    const QString path = Files::put("there.txt", "x");
    Messages messages;
    if (!grows) {
        messages.expect(QMessageBox::Yes);
    }
    m_dialogs->expect([](QWidget *dialog) { QMetaObject::invokeMethod(dialog, "accept"); });
    const auto choose = grows ? chooseGrowingFile : chooseSaveFile;
    QCOMPARE(choose(m_parent.get(), "Caption", QDir::currentPath(), "Texts (*.txt)", "there"), path);
    QCOMPARE(messages.told().size(), grows ? 0 : 1);
}

void TestChooseFile::addsTheEndingOfTheChosenFilter()
{
    m_dialogs->expect([](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText("values");
        auto *filters = dialog->findChild<QComboBox *>("fileTypeCombo");
        QTest::keyClick(filters, Qt::Key_Down);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QCOMPARE(chooseSaveFile(m_parent.get(), "Caption", QDir::currentPath(), "Texts (*.txt);;Tables (*.csv)"),
             QDir::current().filePath("values.csv"));
}

QTEST_MAIN(TestChooseFile)
#include "tst_choosefile.moc"

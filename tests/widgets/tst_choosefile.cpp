#include "widgets/choosefile.h"

#include "files.h"
#include "modaldialogs.h"

#include <QFileDialog>
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

QTEST_MAIN(TestChooseFile)
#include "tst_choosefile.moc"

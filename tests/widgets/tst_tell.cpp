#include "widgets/tell.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTimer>
#include <QtTest>

// The message boxes of the forms.
class TestTell : public QObject
{
    Q_OBJECT
private slots:
    void textIsShownAsItStands();
    void boxThatDiesWithItsParentHasNoAnswer();
    void answeredBoxGoes();
};

void TestTell::textIsShownAsItStands()
{
    QString shown;
    Qt::TextFormat format = Qt::RichText;
    QTimer::singleShot(0, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        shown = box->text();
        format = box->textFormat();
        box->button(QMessageBox::No)->click();
    });
    QCOMPARE(Tell::question(nullptr, "Box", "<img src='file:///x'>", QMessageBox::Yes | QMessageBox::No),
             QMessageBox::No);
    QCOMPARE(shown, "<img src='file:///x'>");
    QCOMPARE(format, Qt::PlainText);
}

void TestTell::boxThatDiesWithItsParentHasNoAnswer()
{
    QPointer<QWidget> parent = new QWidget;
    QTimer::singleShot(0, this, [parent] { delete parent; });
    QCOMPARE(Tell::warning(parent, "Box", "gone"), QMessageBox::NoButton);
    QVERIFY(!parent);
}

void TestTell::answeredBoxGoes()
{
    QWidget parent;
    QTimer::singleShot(0, this, [] { QApplication::activeModalWidget()->close(); });
    Tell::information(&parent, "Box", "done");
    QTRY_VERIFY(parent.children().isEmpty());
}

QTEST_MAIN(TestTell)
#include "tst_tell.moc"

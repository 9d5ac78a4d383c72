#pragma once

#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMimeData>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

// What the tests of dialogs and small forms look at.
namespace InputDialogs {

// The text of each label with the name of the widget that it is for.
inline QMap<QString, QString> buddies(const QWidget &form)
{
    QMap<QString, QString> names;
    const auto labels = form.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        names.insert(label->text(), label->buddy() ? label->buddy()->objectName() : QString());
    }
    return names;
}

inline QStringList entries(const QComboBox *list)
{
    QStringList texts;
    for (int index = 0; index < list->count(); ++index) {
        texts.append(list->itemText(index));
    }
    return texts;
}

// Enter in the field "name" accepts; Escape there and "cancelButton" reject.
inline void compareEnterAndEscape(QDialog *dialog)
{
    auto *name = dialog->findChild<QLineEdit *>("name");
    dialog->show();
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    dialog->show();
    QTest::keyClick(name, Qt::Key_Escape);
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    dialog->show();
    dialog->setResult(QDialog::Accepted);
    dialog->findChild<QPushButton *>("cancelButton")->click();
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
}

// Pastes a bold text, of which the words are taken and the bold is not.
inline void comparePasteOfRichText(QTextEdit *edit)
{
    auto *rich = new QMimeData;
    rich->setText("words");
    rich->setHtml("<b>words</b>");
    QGuiApplication::clipboard()->setMimeData(rich);
    edit->clear();
    edit->paste();
    QCOMPARE(edit->toPlainText(), "words");
    QVERIFY(!edit->textCursor().charFormat().font().bold());
}

} // namespace InputDialogs

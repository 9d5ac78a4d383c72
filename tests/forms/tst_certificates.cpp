#include "files.h"
#include "formtest.h"
#include "model/itemroles.h"
#include "services/serviceiec61850editdialog.h"
#include "standards/standardopcuaeditdialog.h"

#include <QAction>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QToolButton>

// The certificates and keys of the two forms that have some: a file is chosen, shown by its path and stored
// with its content. Whatever dies below a dialog or a message is not touched afterwards.
class TestCertificates : public FormTest
{
    Q_OBJECT
public:
    TestCertificates()
        : FormTest("Line", Qt::UserRole, QString())
    {
    }
private slots:
    void initTestCase_data();

    void selectedFileIsSavedWithItsContent();
    void cancelLeavesTheItemAlone();
    void fileThatCannotBeOpenedLeavesItsPath();
    void tellsWhatWasRead();
    void clearsPathAndContent_data();
    void clearsPathAndContent();
    void otherPathEmptiesBothRoles();
    void formMayDieBelowItsFileDialog();
    void formMayDieBelowTheMessageOfItsPath();
    void itemMayLeaveBelowTheMessageOfItsPath();
    void otherItemMayComeBelowTheMessageOfItsPath();

private:
    std::unique_ptr<DefinitionForm> open();
    void choose(const QWidget &form, const ModalDialogs::Step &step);
    static ModalDialogs::Step take(const QString &path);
    static QLineEdit *pathOf(const QWidget &form);
    void changeBothPaths(const QWidget &form);
};

namespace {

const char *const certificateMessage =
    "Warning|The certificate storage path is inconsistent with the loading "
    "path.Please select the certificate again.Prevent data loss.";
const char *const keyMessage =
    "Warning|The key storage path is inconsistent with the loading path.Please select "
    "the key again.Prevent data loss.";

// Of the actions in the field of a path.
constexpr int markPlace = 0;
constexpr int clearPlace = 1;

struct Field {
    const char *form;
    const char *name;
    int pathRole;
    int contentRole;
    const char *message; // when another path stands there at a save
};

const Field fields[] = {
    {"Standard", "certificate", standardCertificatePathRole, standardCertificateRole, certificateMessage},
    {"Standard", "privateKey", standardPrivateKeyPathRole, standardPrivateKeyRole, keyMessage},
    {"Service", "rootCertificate", serviceRootCertificatePathRole, serviceRootCertificateRole,
     certificateMessage},
    {"Service", "serverKey", serviceServerKeyPathRole, serviceServerKeyRole, keyMessage},
    {"Service", "clientCertificate1", serviceClientCertificatePath1Role, serviceClientCertificate1Role,
     certificateMessage},
};

const Field &field()
{
    QFETCH_GLOBAL(int, index);
    return fields[index];
}

bool isService()
{
    return qstrcmp(field().form, "Service") == 0;
}

} // namespace

void TestCertificates::initTestCase_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Field &each : fields) {
        QTest::addRow("%s, %s", each.form, each.name) << index++;
    }
}

std::unique_ptr<DefinitionForm> TestCertificates::open()
{
    if (!isService()) {
        return std::make_unique<standardOPCUAEditDialog>(m_item, m_workspace);
    }
    auto form = std::make_unique<ServiceIEC61850EditDialog>(m_item, m_workspace);
    check(*form, "enableSSL")->setChecked(true);
    check(*form, "isVerifyClientCert")->setChecked(true);
    return form;
}

QLineEdit *TestCertificates::pathOf(const QWidget &form)
{
    return edit(form, QByteArray(field().name) + "Path");
}

// Presses the button that brings up the file dialog.
void TestCertificates::choose(const QWidget &form, const ModalDialogs::Step &step)
{
    m_dialogs->expect(step);
    click(form, QByteArray(field().name) + "Select");
}

ModalDialogs::Step TestCertificates::take(const QString &path)
{
    return [path](QWidget *dialog) {
        dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

// Of the first certificate and of the key, so that a save has two messages to show.
void TestCertificates::changeBothPaths(const QWidget &form)
{
    edit(form, isService() ? "rootCertificatePath" : "certificatePath")->setText("/other");
    edit(form, isService() ? "serverKeyPath" : "privateKeyPath")->setText("/other");
}

void TestCertificates::selectedFileIsSavedWithItsContent()
{
    const QString path = Files::put("client.pem", "-----PEM-----\n");
    const auto form = open();
    choose(*form, take(path));
    QCOMPARE(pathOf(*form)->text(), path);
    QCOMPARE(pathOf(*form)->toolTip(), path + "\n13 bytes were read");
    choose(*form, [](QWidget *dialog) { dialog->close(); });
    QCOMPARE(pathOf(*form)->text(), path);
    QCOMPARE(m_item->data(field().pathRole), QVariant());
    form->saveChanges();
    QCOMPARE(m_item->data(field().pathRole), QVariant(path));
    QCOMPARE(m_item->data(field().contentRole), QVariant("-----PEM-----"));
    open()->saveChanges();
    QCOMPARE(m_item->data(field().contentRole), QVariant("-----PEM-----"));
}

void TestCertificates::cancelLeavesTheItemAlone()
{
    m_item->setData("old", field().contentRole);
    const auto form = open();
    choose(*form, take(Files::put("client.pem", "new")));
    click(*form, "cancelButton");
    QCOMPARE(m_item->data(field().contentRole), QVariant("old"));
    QCOMPARE(m_item->data(field().pathRole), QVariant());
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestCertificates::fileThatCannotBeOpenedLeavesItsPath()
{
    const QString path = Files::put("gone.pem", "x");
    m_item->setData("old", field().contentRole);
    const auto form = open();
    m_messages->expect();
    choose(*form, [path](QWidget *dialog) {
        // The file goes away between the choice and the reading.
        connect(qobject_cast<QFileDialog *>(dialog), &QFileDialog::accepted, dialog,
                [path] { QFile::remove(path); });
        take(path)(dialog);
    });
    QCOMPARE(m_messages->told(), QStringList("Error|Failed to open file: " + path));
    form->saveChanges();
    QCOMPARE(m_item->data(field().pathRole), QVariant(path));
    QCOMPARE(m_item->data(field().contentRole), QVariant(QString()));
}

// A file of another ending is read as nothing: its path is marked, as that of a file that is gone.
void TestCertificates::tellsWhatWasRead()
{
    m_item->setData("/some/<b>where</b>/root.pem", field().pathRole);
    m_item->setData("-----PEM-----", field().contentRole);
    const auto form = open();
    const auto isShown = [&form](int place) { return pathOf(*form)->actions().at(place)->isVisible(); };
    QVERIFY(pathOf(*form)->toolTip().contains("/&lt;b&gt;where&lt;/b&gt;/")); // no mark-up
    QVERIFY(!isShown(markPlace));
    QVERIFY(isShown(clearPlace));

    const QString path = Files::put("client.txt", "x");
    choose(*form, take(path));
    QCOMPARE(pathOf(*form)->text(), path);
    QCOMPARE(pathOf(*form)->toolTip(), path + "\nNothing was read from this file");
    QCOMPARE(pathOf(*form)->accessibleDescription(), "Nothing was read from this file");
    QVERIFY(isShown(markPlace));

    form->replaceItem(addItem("Empty"));
    QCOMPARE(pathOf(*form)->toolTip(), QString());
    QVERIFY(!isShown(markPlace));
    QVERIFY(!isShown(clearPlace));
}

void TestCertificates::clearsPathAndContent_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("cross") << false;
    QTest::newRow("key") << true;
}

void TestCertificates::clearsPathAndContent()
{
    QFETCH(bool, byKey);
    for (const Field &each : fields) {
        m_item->setData("/kept", each.pathRole);
        m_item->setData("kept", each.contentRole);
    }
    const auto form = open();
    RUN(show(*form));
    if (byKey) {
        QTest::keyClick(pathOf(*form), Qt::Key_Delete);
    } else {
        const auto buttons = pathOf(*form)->findChildren<QToolButton *>();
        QTest::mouseClick(buttons.last(), Qt::LeftButton);
    }
    QCOMPARE(pathOf(*form)->text(), QString());
    QCOMPARE(m_item->data(field().contentRole), QVariant("kept")); // until it is saved
    form->saveChanges();
    for (const Field &each : fields) {
        const bool isCleared = each.pathRole == field().pathRole;
        QCOMPARE(m_item->data(each.pathRole), QVariant(isCleared ? QString() : "/kept"));
        QCOMPARE(m_item->data(each.contentRole), QVariant(isCleared ? QString() : "kept"));
    }
    QCOMPARE(m_messages->told(), QStringList());
}

void TestCertificates::otherPathEmptiesBothRoles()
{
    for (const Field &each : fields) {
        m_item->setData("/kept", each.pathRole);
        m_item->setData("kept", each.contentRole);
    }
    const auto form = open();
    pathOf(*form)->setText("/other");
    m_messages->expect();
    form->saveChanges();
    QCOMPARE(m_messages->told(), QStringList(QLatin1String(field().message)));
    for (const Field &each : fields) {
        const bool isEmptied = each.pathRole == field().pathRole;
        QCOMPARE(m_item->data(each.pathRole), QVariant(isEmptied ? QString() : "/kept"));
        QCOMPARE(m_item->data(each.contentRole), QVariant(isEmptied ? QString() : "kept"));
    }
    QCOMPARE(m_workspace->messages.size(), 1);
}

void TestCertificates::formMayDieBelowItsFileDialog()
{
    const QPointer<DefinitionForm> form = open().release();
    choose(*form, [form](QWidget *) { delete form; });
    QVERIFY(!form);
    QCOMPARE(m_item->data(field().pathRole), QVariant());
}

void TestCertificates::formMayDieBelowTheMessageOfItsPath()
{
    const QPointer<DefinitionForm> form = open().release();
    changeBothPaths(*form);
    QTimer::singleShot(0, this, [form] { delete form; });
    form->saveChanges();
    QVERIFY(!form);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestCertificates::itemMayLeaveBelowTheMessageOfItsPath()
{
    const auto form = open();
    changeBothPaths(*form);
    m_messages->expect();
    QTimer::singleShot(0, this, [this] { removeItems(); });
    form->saveChanges();
    QCOMPARE(m_messages->told(), QStringList(QLatin1String(certificateMessage)));
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestCertificates::otherItemMayComeBelowTheMessageOfItsPath()
{
    QStandardItem *other = addItem("other");
    other->setData("kept", fields[0].contentRole);
    other->setData("kept", fields[2].contentRole);
    const auto form = open();
    changeBothPaths(*form);
    m_messages->expect();
    QTimer::singleShot(0, form.get(), [&form, other] { form->replaceItem(other); });
    form->saveChanges();
    QCOMPARE(m_messages->told().size(), 1);
    QCOMPARE(other->data(fields[0].contentRole), QVariant("kept"));
    QCOMPARE(other->data(fields[2].contentRole), QVariant("kept"));
    QCOMPARE(other->data(fields[1].pathRole), QVariant());
    QCOMPARE(other->data(fields[3].pathRole), QVariant());
    QCOMPARE(m_item->data(serviceIsVerifyClientCertRole), QVariant()); // which a save would have written last
    QCOMPARE(m_workspace->messages, QStringList());
}

QTEST_MAIN(TestCertificates)
#include "tst_certificates.moc"

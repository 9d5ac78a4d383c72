#include "logtail.h"
#include "messages.h"
#include "modaldialogs.h"
#include "projectdump.h"
#include "windowundertest.h"

#include <QComboBox>

using Window = WindowUnderTest;

namespace {

// Nothing listens there: sessions to it fail and are tried again.
const QString nobody = "127.0.13.10";

// What who listens to the tree hears, as it finds the items then.
class Listener : public QObject
{
public:
    explicit Listener(const Window &window)
    {
        const QStandardItemModel *model = window.projectModel();
        connect(model, &QAbstractItemModel::rowsInserted, this,
                [this, model](const QModelIndex &parent, int first, int last) {
                    for (int row = first; row <= last; ++row) {
                        m_heard.append("new " + summary(model->itemFromIndex(model->index(row, 0, parent))));
                    }
                });
        connect(model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex &, const QModelIndex &, const QVector<int> &roles) {
                    for (int role : roles) {
                        m_heard.append(QString("changed %1").arg(role));
                    }
                });
        connect(window.projectTree()->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this](const QModelIndex &index) { m_heard.append("current " + index.data().toString()); });
    }

    QStringList heard() const { return m_heard; }

private:
    static QString summary(const QStandardItem *item)
    {
        QStringList parts{item->text()};
        if (!item->icon().isNull()) {
            parts.append("icon");
        }
        return (parts + ProjectDump::roles(item)).join(", ");
    }

    QStringList m_heard;
};

void enter(const QWidget *dialog, const QString &input, const QString &value)
{
    if (auto *list = dialog->findChild<QComboBox *>(input)) {
        const int byData = list->findData(value);
        list->setCurrentIndex(byData < 0 ? list->findText(value) : byData);
    } else {
        dialog->findChild<QLineEdit *>(input)->setText(value);
    }
}

} // namespace

// How a new node comes into the tree, for each slot that adds one and for a new project.
class TestNewNodes : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void nodeIsCompleteWhenItAppears_data() { addKinds(); }
    void nodeIsCompleteWhenItAppears();
    void itemsOfANewProjectAreCompleteWhenTheyAppear();
    void inputDialogOutlivesTheOpeningOfTheForm_data() { addKinds(); }
    void inputDialogOutlivesTheOpeningOfTheForm();
    void inputDialogOutlivesTheWarning_data() { addKinds(); }
    void inputDialogOutlivesTheWarning();

private:
    static void addKinds();
    // Calls the slot on the folder and enters the values, an input's name each, and the name.
    void add(const QByteArray &slot, const QString &folder, const QStringList &inputs, const QString &name,
             const ModalDialogs::Step &accept);

    QScopedPointer<Window> m_window;
    QStandardItem *m_project = nullptr;
};

void TestNewNodes::init()
{
    m_window.reset(new Window);
    m_project = m_window->addProject("plant");
    // No project has these two by itself.
    ProjectTree::appendDefinition(m_project, ProjectTree::plcFolder, QString());
    ProjectTree::appendDefinition(m_project, ProjectTree::serverFolder, QString());
}

void TestNewNodes::addKinds()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("inputs");
    QTest::addColumn<QVector<int>>("roles");
    QTest::newRow("standardDLT645EditDialog")
        << QByteArray("standardAddFile") << ProjectTree::standardFolder << QStringList{"protocol=DLT645"}
        << QVector<int>{standardProtocolRole};
    QTest::newRow("standardModbusEditDialog")
        << QByteArray("standardAddFile") << ProjectTree::standardFolder << QStringList{"protocol=Modbus"}
        << QVector<int>{standardProtocolRole};
    QTest::newRow("BoxEditDialog") << QByteArray("boxAddFile") << ProjectTree::boxFolder
                                   << QStringList{"ip=" + nobody} << QVector<int>{boxIpRole, boxModelRole};
    QTest::newRow("PLCEditDialog") << QByteArray("plcAddFile") << ProjectTree::plcFolder
                                   << QStringList{"manufacturer=Omron", "protocol=Fins"}
                                   << QVector<int>{plcManufacturerRole, plcProtocolRole};
    const QVector<int> server{serverDescriptionRole, serverProtocolRole, serverIpRole, serverPortRole,
                              serverDomainNameRole};
    QTest::newRow("ServerEditDialog")
        << QByteArray("serverAddFile") << ProjectTree::serverFolder
        << QStringList{"description=up", "protocol=MQTT", "ip=10.0.0.1", "port=1884", "domainName=a.b"}
        << server;
    QTest::newRow("ServerHJ212EditDialog") << QByteArray("serverAddFile") << ProjectTree::serverFolder
                                           << QStringList{"description=up", "protocol=HJ212"} << server;
}

void TestNewNodes::add(const QByteArray &slot, const QString &folder, const QStringList &inputs,
                       const QString &name, const ModalDialogs::Step &accept)
{
    m_window->select(Window::folder(m_project, folder));
    ModalDialogs dialogs;
    dialogs.expect([&](QWidget *dialog) {
        enter(dialog, "name", name);
        for (const QString &input : inputs) {
            enter(dialog, input.section(QLatin1Char('='), 0, 0), input.section(QLatin1Char('='), 1));
        }
        accept(dialog);
        Window::press(dialog, "okButton");
    });
    QVERIFY(QMetaObject::invokeMethod(m_window.data(), slot.constData()));
    QCOMPARE(dialogs.pending(), 0);
}

void TestNewNodes::nodeIsCompleteWhenItAppears()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, folder);
    QFETCH(QStringList, inputs);
    QFETCH(QVector<int>, roles);
    QScopedPointer<Listener> listener;
    RUN(add(slot, folder, inputs, "north", [&](QWidget *) { listener.reset(new Listener(*m_window)); }));

    const QStandardItem *node = Window::folder(m_project, folder)->child(0);
    QStringList made{"new north", "icon"};
    for (int role : roles) {
        made.append(QString("+%1 QString %2").arg(role - Qt::UserRole).arg(node->data(role).toString()));
    }
    // The form that opens may add values of its own and changes none of these.
    QStringList heard = listener->heard();
    QCOMPARE(heard.mid(0, 2), QStringList({made.join(", "), "current north"}));
    for (int role : QVector<int>{Qt::DisplayRole, Qt::DecorationRole} + roles) {
        QCOMPARE(heard.count(QString("changed %1").arg(role)), 0);
    }
    QCOMPARE(heard.filter("new ").size(), 1);
}

void TestNewNodes::itemsOfANewProjectAreCompleteWhenTheyAppear()
{
    const Listener listener(*m_window);
    m_window->addProject("mill", "/nowhere");
    QCOMPARE(listener.heard(),
             QStringList({"new mill, icon, +1 QString /nowhere, +2 QString about mill", "new Standard, icon",
                          "new Service, icon", "new Box, icon", "new Data, icon",
                          "new IEC61850, icon, +171 QString IEC61850"}));
}

void TestNewNodes::inputDialogOutlivesTheOpeningOfTheForm()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, folder);
    QFETCH(QStringList, inputs);
    const LogTail log{QString()};
    QString dialogClass;
    RUN(add(slot, folder, inputs, "north",
            [&](QWidget *dialog) { dialogClass = QLatin1String(dialog->metaObject()->className()); }));
    const QString formClass = QLatin1String(QTest::currentDataTag());
    QCOMPARE(
        log.events().filter(QRegularExpression(": (new-nuilt|destroyed)$")),
        QStringList({dialogClass + ": new-nuilt", formClass + ": new-nuilt", dialogClass + ": destroyed"}));
}

void TestNewNodes::inputDialogOutlivesTheWarning()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, folder);
    QFETCH(QStringList, inputs);
    // A PLC is compared with the Standards instead of its own kind.
    const QString compared = folder == ProjectTree::plcFolder ? ProjectTree::standardFolder : folder;
    ProjectTree::appendDefinition(Window::folder(m_project, compared), "taken", QString());
    for (const QString &name : {QString("taken"), QString()}) {
        Messages messages;
        messages.expect();
        QStringList toldBefore;
        const QObject listener;
        RUN(add(slot, folder, inputs, name, [&](QWidget *dialog) {
            connect(dialog, &QObject::destroyed, &listener, [&] { toldBefore = messages.told(); });
        }));
        QCOMPARE(messages.told().size(), 1);
        QCOMPARE(toldBefore, messages.told());
    }
}

QTEST_MAIN(TestNewNodes)
#include "tst_newnodes.moc"

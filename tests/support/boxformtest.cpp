#include "boxformtest.h"

#include "model/itemroles.h"

#include <QApplication>
#include <QComboBox>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>

const QVector<BoxInput> &boxInputs()
{
    static const QVector<BoxInput> inputs{
        {"name", Qt::DisplayRole, "Gate 1"},
        {"ip", boxIpRole, ""},
        {"model", boxModelRole, "MRN-GATE-20"},
        {"lanIp", boxLanIpRole, "10.0.1.1"},
        {"lanMask", boxLanMaskRole, "10.0.1.2"},
        {"lanGateway", boxLanGatewayRole, "10.0.1.3"},
        {"lanDns1", boxLanDns1Role, "10.0.1.4"},
        {"lanDns2", boxLanDns2Role, "10.0.1.5"},
        {"wanDhcp", boxWanDhcpRole, "Enable"},
        {"wanIp", boxWanIpRole, "10.0.2.1"},
        {"wanMask", boxWanMaskRole, "10.0.2.2"},
        {"wanGateway", boxWanGatewayRole, "10.0.2.3"},
        {"wanDns1", boxWanDns1Role, "10.0.2.4"},
        {"wanDns2", boxWanDns2Role, "10.0.2.5"},
        {"wifiOnOff", boxWifiOnOffRole, "on"},
        {"wifiMode", boxWifiModeRole, "station"},
        {"wifissid", boxWifiSsidRole, "yard"},
        {"wifipassword", boxWifiPasswordRole, "secret"},
        {"wifiDhcp", boxWifiDhcpRole, "Enable"},
        {"wifiIp", boxWifiIpRole, "10.0.3.1"},
        {"wifiMask", boxWifiMaskRole, "10.0.3.2"},
        {"wifiGateway", boxWifiGatewayRole, "10.0.3.3"},
        {"wifiDns1", boxWifiDns1Role, "10.0.3.4"},
        {"wifiDns2", boxWifiDns2Role, "10.0.3.5"},
        {"lteOnOff", boxLteOnOffRole, "on"},
        {"at1", boxAt1Role, "AT+A"},
        {"at2", boxAt2Role, "AT+B"},
        {"at3", boxAt3Role, "AT+C"},
        {"at4", boxAt4Role, "AT+D"},
        {"at5", boxAt5Role, "AT+E"},
        {"ntpServer", boxNtpServerRole, "10.0.4.1"},
        {"time", boxTimeRole, "2024-05-06 07:08:09"},
    };
    return inputs;
}

QMap<int, QVariant> inputRolesOf(const QStandardItem &item)
{
    QMap<int, QVariant> roles;
    for (const BoxInput &input : boxInputs()) {
        roles.insert(input.role, item.data(input.role));
    }
    return roles;
}

QByteArray jsonAnswer(const QByteArray &text)
{
    const int total = text.size() + 10;
    QByteArray frame("\x12\x34\x05\x00", 4);
    frame += char(total & 0xff);
    frame += char(total >> 8);
    frame += char(text.size() & 0xff);
    frame += char(text.size() >> 8);
    return frame + text + "\x56\x78";
}

QList<QJsonObject> requestsIn(const QByteArray &stream)
{
    QList<QJsonObject> requests;
    int start = 0;
    while (start + 8 <= stream.size()) {
        const int length = uchar(stream[start + 4]) + 256 * uchar(stream[start + 5]);
        if (stream[start + 2] == 5) {
            requests.append(QJsonDocument::fromJson(stream.mid(start + 8, length - 10)).object());
        }
        start += length;
    }
    return requests;
}

BoxFormTest::BoxFormTest(QString boxAddress)
    : FormTest(QString(), Qt::UserRole, QString())
    , m_boxAddress(std::move(boxAddress))
{
}

void BoxFormTest::prepare(QStandardItem *item) const
{
    const QMap<int, QVariant> roles = fullRoles();
    for (auto role = roles.begin(); role != roles.end(); ++role) {
        item->setData(role.value(), role.key());
    }
}

void BoxFormTest::init()
{
    m_box = std::make_unique<FakeBox>(m_boxAddress);
    QVERIFY(m_box->isListening());
    FormTest::init();
}

void BoxFormTest::cleanup()
{
    delete m_form;
    m_unwatched.reset();
    FormTest::cleanup();
    m_box.reset();
}

void BoxFormTest::open()
{
    m_form = new BoxEditDialog(m_item, m_workspace);
}

QString BoxFormTest::shown(const char *name) const
{
    if (const auto *edit = find<QLineEdit>(name)) {
        return edit->text();
    }
    if (const auto *list = find<QComboBox>(name)) {
        return list->currentText();
    }
    const bool on = m_form->findChild<QRadioButton *>(QLatin1String(name) + QLatin1String("On"))->isChecked();
    const bool off =
        m_form->findChild<QRadioButton *>(QLatin1String(name) + QLatin1String("Off"))->isChecked();
    return on == off ? QString("neither") : on ? QString("on") : "off";
}

QMap<int, QVariant> BoxFormTest::shownRoles() const
{
    QMap<int, QVariant> roles;
    for (const BoxInput &input : boxInputs()) {
        roles.insert(input.role, shown(input.name));
    }
    return roles;
}

QString BoxFormTest::status() const
{
    return find<QLabel>("statusLabel")->text();
}

QMap<int, QVariant> BoxFormTest::fullRoles() const
{
    QMap<int, QVariant> roles;
    for (const BoxInput &input : boxInputs()) {
        roles.insert(input.role, QString::fromLatin1(input.text));
    }
    roles[boxIpRole] = m_boxAddress;
    return roles;
}

bool BoxFormTest::connected() const
{
    return QTest::qWaitFor(
        [this] { return m_box->count() > 0 && m_box->received(m_box->count() - 1).size() >= 8; });
}

void BoxFormTest::answer(const QByteArray &bytes) const
{
    m_box->send(m_box->count() - 1, bytes);
}

void BoxFormTest::actBelowTheNextMessage(std::function<void()> act)
{
    m_unwatched = std::make_unique<UnwatchedModals>();
    auto *timer = new QTimer(m_box.get());
    connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act), acted = false]() mutable {
        QWidget *message = QApplication::activeModalWidget();
        if (!acted && message) {
            acted = true;
            act();
        } else if (acted && message) {
            message->close();
        } else if (acted) {
            timer->deleteLater();
        }
    });
    timer->start(1);
}

void BoxFormTest::chooseHostAddress(const QString &address)
{
    m_dialogs->expect([address](QWidget *dialog) {
        auto *list = dialog->findChild<QComboBox *>("hostAddress");
        list->addItem(address);
        list->setCurrentIndex(list->count() - 1);
        dialog->findChild<QPushButton *>("okButton")->click();
    });
    m_form->showChangeHostAddressDialog();
}

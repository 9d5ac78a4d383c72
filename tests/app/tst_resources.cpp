#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtTest>

// Every image that the program asks for by name is there and can be drawn.
class TestResources : public QObject
{
    Q_OBJECT
private slots:
    void drawsEverySvg_data();
    void drawsEverySvg();
    void loadsEveryPng_data();
    void loadsEveryPng();
    void hasADockStyleSheet();
    void hasNoApplicationStyleSheet();
};

namespace {

QString imagePath(const char *name)
{
    return ":/adsdemo/images/" + QLatin1String(name);
}

} // namespace

void TestResources::drawsEverySvg_data()
{
    QTest::addColumn<QString>("path");
    static const char *const names[] = {
        "Box.svg",
        "Connect.svg",
        "CustomPoll.svg",
        "DLT645.svg",
        "Data.svg",
        "Delete.svg",
        "Disconnect.svg",
        "HJ212.svg",
        "HuaWei.svg",
        "IEC61850.svg",
        "Load Project.svg",
        "MQTT.svg",
        "Modbus.svg",
        "New Project.svg",
        "OpcUa.svg",
        "OpcUaServer.svg",
        "PLC-file.svg",
        "Reboot Device.svg",
        "SL651.svg",
        "SelectAll.svg",
        "Server.svg",
        "Service.svg",
        "Update project.svg",
        "add.svg",
        "ali.svg",
        "back.svg",
        "box-file.svg",
        "cancel.svg",
        "change_host.svg",
        "close-light.svg",
        "copy.svg",
        "data-file.svg",
        "data monitoring.svg",
        "custom-menu-button.svg",
        "detach-light.svg",
        "dio.svg",
        "edit-1.svg",
        "eye.svg",
        "follow.svg",
        "look.svg",
        "markers.svg",
        "message.svg",
        "nothing-read.svg",
        "ok.svg",
        "onenet.svg",
        "photo.svg",
        "picture_in_picture.svg",
        "project_manage.svg",
        "read.svg",
        "record.svg",
        "restore.svg",
        "save.svg",
        "saveini.svg",
        "server-file.svg",
        "standard.svg",
        "stop.svg",
        "tabs-light.svg",
        "trend.svg",
        "write.svg",
        "zoom-in.svg",
        "zoom-out.svg",
    };
    for (const char *name : names) {
        QTest::newRow(name) << imagePath(name);
    }
}

void TestResources::drawsEverySvg()
{
    QFETCH(QString, path);
    QSvgRenderer renderer(path);
    QVERIFY(renderer.isValid());
    QCOMPARE(renderer.defaultSize(), QSize(24, 24));

    QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();

    // A line drawing covers some of the square and leaves most of it clear; a drawing whose "no fill" got
    // lost would cover nearly all of it.
    int covered = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            covered += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
        }
    }
    QVERIFY2(covered > 40 && covered < 400, qPrintable(QString::number(covered)));
}

void TestResources::loadsEveryPng_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::newRow("folder of live values") << imagePath("Data.png") << QSize(64, 64);
    QTest::newRow("new Box") << imagePath("Box.png") << QSize(64, 64);
    QTest::newRow("new project") << imagePath("New.png") << QSize(64, 64);
    QTest::newRow("new PLC") << imagePath("PLC (2).png") << QSize(64, 64);
    QTest::newRow("mark") << imagePath("logo-1.png") << QSize(256, 256);
    QTest::newRow("mark and name") << imagePath("logo.png") << QSize(480, 240);
    QTest::newRow("picture 1") << imagePath("picture-1.png") << QSize(640, 480);
    QTest::newRow("picture 2") << imagePath("picture-2.png") << QSize(640, 480);
    QTest::newRow("picture 3") << imagePath("picture-3.png") << QSize(640, 480);
    QTest::newRow("picture 4") << imagePath("picture-4.png") << QSize(640, 480);
    QTest::newRow("picture 5") << imagePath("picture-5.png") << QSize(640, 480);
}

void TestResources::loadsEveryPng()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    const QImage image(path);
    QCOMPARE(image.size(), size);
}

void TestResources::hasADockStyleSheet()
{
    // Read without a slash behind the colon too: the resource root is meant either way.
    for (const char *path :
         {":adsdemo/res/visual_studio_light.css", ":/adsdemo/res/visual_studio_light.css"}) {
        QFile file(QString::fromLatin1(path));
        QVERIFY2(file.open(QIODevice::ReadOnly), path);
        const QByteArray text = file.readAll();
        for (const char *word :
             {"ads--CDockManager", "ads--CDockAreaWidget", "ads--CDockAreaTitleBar", "ads--CDockWidgetTab",
              "ads--CTitleBarButton", "[focused=\"true\"]", "[activeTab=\"true\"]"}) {
            QVERIFY2(text.contains(word), word);
        }
    }
}

void TestResources::hasNoApplicationStyleSheet()
{
    // The program starts in the platform's own style.
    QVERIFY(!QFile::exists(":/adsdemo/app.css"));
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"

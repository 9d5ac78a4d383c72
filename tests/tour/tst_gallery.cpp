#include "contactsheet.h"
#include "formtexts.h"
#include "gallery.h"
#include "inspector.h"

#include <QApplication>
#include <QDir>
#include <QStyle>
#include <QStyleFactory>
#include <QTranslator>
#include <QWidget>
#include <QtTest>

// Every form and dialog of the program, in each language on a light and on a dark desktop: whether all of it
// can be read, and worked without a mouse. TOUR_DIR names the folder that gets the pictures, if any.
class TestGallery : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void worksWithoutMouse_data();
    void worksWithoutMouse();
    void everyTableCanBeCopied_data();
    void everyTableCanBeCopied();
    void looksRight_data();
    void looksRight();
    void translationsAreOfTheForm_data();
    void translationsAreOfTheForm();

private:
    void addExhibitRows() const;
    // Shows the form as it stands in the program; with room for all of it, or as much as a tab has.
    void show(const Exhibit &exhibit, int height);
    void take(const QString &setting, const QString &name, const QPixmap &picture);

    QVector<Exhibit> m_exhibits = galleryExhibits();
    GalleryStock m_stock;
    QTranslator m_translator;
    std::unique_ptr<QWidget> m_form;
    QString m_folder = qEnvironmentVariable("TOUR_DIR");
    QMap<QString, ContactSheet> m_sheets; // by language and desktop
};

namespace {

constexpr int tabWidth = 520; // pixels of a tab on a common screen
constexpr int tabHeight = 640;
constexpr int wholeHeight = 2400; // pixels that show every form without scrolling

// The style's own colours, but for those that are too pale already in the style.
QPalette lightDesktop()
{
    QPalette palette = QApplication::style()->standardPalette();
    palette.setColor(QPalette::Highlight, QColor(0x20, 0x6a, 0xa8));
    palette.setColor(QPalette::PlaceholderText, QColor(0x60, 0x60, 0x60));
    return palette;
}

QPalette darkDesktop()
{
    QPalette palette(QColor(0x35, 0x35, 0x35), QColor(0x2d, 0x2d, 0x2d));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x2d, 0x2d, 0x2d));
    palette.setColor(QPalette::Highlight, QColor(0x2a, 0x62, 0x9a));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0xa0, 0xa0, 0xa0));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(0xf0, 0xf0, 0xf0));
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    }
    return palette;
}

QByteArray lines(const QStringList &texts)
{
    return '\n' + texts.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

void TestGallery::initTestCase()
{
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QFont font = QApplication::font();
    font.setPointSize(10); // as on a common desktop; the platform without a screen has a larger one
    QApplication::setFont(font);
    QCoreApplication::installTranslator(&m_translator);
    QVERIFY(m_folder.isEmpty() || QDir().mkpath(m_folder));
}

void TestGallery::cleanup()
{
    m_form.reset();
    // A shortcut to the end of what the form left to the event loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestGallery::cleanupTestCase()
{
    for (auto sheet = m_sheets.cbegin(); sheet != m_sheets.cend(); ++sheet) {
        const QString file = QString("%1/forms-%2.png").arg(m_folder, sheet.key());
        QVERIFY2(sheet.value().compose().save(file), qPrintable(file));
    }
}

void TestGallery::show(const Exhibit &exhibit, int height)
{
    m_form.reset(exhibit.make(m_stock));
    if (exhibit.place == Exhibit::Place::Tab) {
        m_form->resize(tabWidth, height);
    }
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    QCoreApplication::processEvents();
}

void TestGallery::take(const QString &setting, const QString &name, const QPixmap &picture)
{
    if (m_folder.isEmpty()) {
        return;
    }
    const QString scaled = setting + QString("-%1x").arg(picture.devicePixelRatio());
    m_sheets[scaled].add(name, picture);
}

void TestGallery::addExhibitRows() const
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < m_exhibits.size(); ++index) {
        QTest::newRow(m_exhibits.at(index).name) << index;
    }
}

void TestGallery::worksWithoutMouse_data()
{
    addExhibitRows();
}

void TestGallery::worksWithoutMouse()
{
    QFETCH(int, index);
    show(m_exhibits.at(index), wholeHeight);
    const QStringList nameless = Inspector::namelessThings(m_form.get());
    QVERIFY2(nameless.isEmpty(), lines(nameless));
    const QStringList stray = Inspector::strayTabs(m_form.get());
    QVERIFY2(stray.isEmpty(), lines(stray));
    show(m_exhibits.at(index), tabHeight); // where it scrolls
    const QStringList scrolled = Inspector::strayTabs(m_form.get()).filter(QLatin1String("not to be seen"));
    QVERIFY2(scrolled.isEmpty(), lines(scrolled));
}

void TestGallery::everyTableCanBeCopied_data()
{
    addExhibitRows();
}

void TestGallery::everyTableCanBeCopied()
{
    QFETCH(int, index);
    show(m_exhibits.at(index), wholeHeight);
    QCOMPARE(Inspector::tablesWithoutCopy(m_form.get()), QStringList());
}

void TestGallery::looksRight_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("desktop");
    // English first: a window of the program leaves its catalogue installed below the test's.
    for (const char *language : {"english", "chinese"}) {
        for (const char *desktop : {"light", "dark"}) {
            for (int index = 0; index < m_exhibits.size(); ++index) {
                QTest::addRow("%s-%s %s", language, desktop, m_exhibits.at(index).name)
                    << index << QString::fromLatin1(language) << QString::fromLatin1(desktop);
            }
        }
    }
}

void TestGallery::looksRight()
{
    QFETCH(int, index);
    QFETCH(QString, language);
    QFETCH(QString, desktop);
    const Exhibit &exhibit = m_exhibits.at(index);
    QVERIFY(m_translator.load(QString(":/adsdemo/%1.qm").arg(language)));
    m_stock.english = language == "english";
    QApplication::setPalette(desktop == "dark" ? darkDesktop() : lightDesktop());
    show(exhibit, tabHeight);
    const QPixmap picture = m_form->grab();
    take(language + QLatin1Char('-') + desktop, QLatin1String(exhibit.name), picture);

    const QImage image = picture.toImage();
    const QStringList pale =
        Inspector::paleTexts(m_form.get(), image) + Inspector::paleIcons(m_form.get(), image);
    const QStringList cutOff = Inspector::cutOffTexts(m_form.get());
    const QStringList sideways = Inspector::sidewaysPages(m_form.get());
    const QStringList wrong = pale + cutOff + sideways;
    QVERIFY2(wrong.isEmpty(),
             "\npale:" + lines(pale) + "\ncut off:" + lines(cutOff) + "\nsideways:" + lines(sideways));
}

void TestGallery::translationsAreOfTheForm_data()
{
    addExhibitRows();
}

// A catalogue is keyed by class: each text is found under the class of the form that shows it, wherever the
// code has it from.
void TestGallery::translationsAreOfTheForm()
{
    QFETCH(int, index);
    QVERIFY(m_translator.load(":/adsdemo/chinese.qm"));
    m_stock.english = false;
    const QString folder = QString(SOURCE_ROOT "/src/resources/");
    static const FormTexts texts(readCatalogue(folder + "chinese.ts"),
                                 readCatalogue(folder + "toolkit_chinese.ts"), m_translator);
    show(m_exhibits.at(index), wholeHeight);
    const QStringList foreign = texts.foreign(m_form.get());
    QVERIFY2(foreign.isEmpty(), lines(foreign));
}

QTEST_MAIN(TestGallery)
#include "tst_gallery.moc"

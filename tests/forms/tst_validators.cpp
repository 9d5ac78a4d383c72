#include "forms/validators.h"

#include <QValidator>
#include <QtTest>

using Make = QValidator *(*)(QObject *);
Q_DECLARE_METATYPE(Make)

// What each of the shared validators lets a user type.
class TestValidators : public QObject
{
    Q_OBJECT
private slots:
    void letsTypeOnlyWhatItIsFor_data();
    void letsTypeOnlyWhatItIsFor();
    void belongsToItsParent();
};

void TestValidators::letsTypeOnlyWhatItIsFor_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("input");
    QTest::addColumn<int>("expected");
    const struct {
        const char *name;
        Make make;
        QString input;
        QValidator::State expected;
    } rows[] = {
        {"ipv4: whole", ipv4Validator, "192.168.1.70", QValidator::Acceptable},
        {"ipv4: lowest", ipv4Validator, "0.0.0.0", QValidator::Acceptable},
        {"ipv4: highest", ipv4Validator, "255.255.255.255", QValidator::Acceptable},
        {"ipv4: leading zeros", ipv4Validator, "010.001.000.009", QValidator::Acceptable},
        {"ipv4: on the way", ipv4Validator, "192.168.", QValidator::Intermediate},
        {"ipv4: empty", ipv4Validator, QString(), QValidator::Intermediate},
        {"ipv4: part of 256", ipv4Validator, "192.256", QValidator::Invalid},
        {"ipv4: five parts", ipv4Validator, "1.2.3.4.", QValidator::Invalid},
        {"ipv4: letter", ipv4Validator, "192.a", QValidator::Invalid},
        {"ipv4: blank", ipv4Validator, "192. ", QValidator::Invalid},
        {"host: dotted", hostNameValidator, "mqtt.example-1.com", QValidator::Acceptable},
        {"host: dotted IP address", hostNameValidator, "192.168.1.70", QValidator::Intermediate},
        {"host: one label", hostNameValidator, "localhost", QValidator::Intermediate},
        {"host: last label of digits", hostNameValidator, "a.1", QValidator::Intermediate},
        {"host: begins with a hyphen", hostNameValidator, "-a", QValidator::Invalid},
        {"host: underscore", hostNameValidator, "a_b", QValidator::Invalid},
        {"no CJK: ASCII", noCjkValidator, "plant A_1!", QValidator::Acceptable},
        {"no CJK: empty", noCjkValidator, QString(), QValidator::Acceptable},
        {"no CJK: Western European", noCjkValidator, "Zähler", QValidator::Acceptable},
        {"no CJK: last letter before", noCjkValidator, QString(QChar(0x04BA)), QValidator::Acceptable},
        {"no CJK: first refused", noCjkValidator, QString(QChar(0x04BB)), QValidator::Invalid},
        {"no CJK: Chinese", noCjkValidator, "a电", QValidator::Invalid},
        {"no CJK: last refused", noCjkValidator, QString(QChar(0xFFFD)), QValidator::Invalid},
        {"no CJK: first letter after", noCjkValidator, QString(QChar(0xFFFE)), QValidator::Acceptable},
        {"port: lowest", portValidator, "-1", QValidator::Acceptable},
        {"port: highest", portValidator, "65535", QValidator::Acceptable},
        {"port: one above", portValidator, "65536", QValidator::Intermediate},
        {"port: six digits", portValidator, "655350", QValidator::Invalid},
        {"port: letter", portValidator, "8a", QValidator::Invalid},
        {"integer: lowest", integerValidator, "-1", QValidator::Acceptable},
        {"integer: highest", integerValidator, "2147483647", QValidator::Acceptable},
        {"integer: beyond", integerValidator, "99999999999", QValidator::Invalid},
        {"integer: fraction", integerValidator, "1.5", QValidator::Invalid},
    };
    for (const auto &row : rows) {
        QTest::newRow(row.name) << row.make << row.input << int(row.expected);
    }
}

void TestValidators::letsTypeOnlyWhatItIsFor()
{
    QFETCH(Make, make);
    QFETCH(QString, input);
    QFETCH(int, expected);
    QObject parent;
    int position = input.size();
    QCOMPARE(int(make(&parent)->validate(input, position)), expected);
}

void TestValidators::belongsToItsParent()
{
    QObject parent;
    QCOMPARE(noCjkValidator(&parent)->parent(), &parent);
}

QTEST_MAIN(TestValidators)
#include "tst_validators.moc"

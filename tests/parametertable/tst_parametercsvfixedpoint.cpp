#include "files.h"
#include "messages.h"
#include "parametertable/parameterform.h"
#include "parametertable/parametertable.h"
#include "rounds.h"

#include <QRandomGenerator>
#include <QtTest>

// Whatever rows a table can hold: exported, imported and exported again they are the same file.
class TestParameterCsvFixedPoint : public QObject
{
    Q_OBJECT
private slots:
    void randomRows_data();
    void randomRows();
};

namespace {

template <typename List> QString oneOf(QRandomGenerator &random, const List &choice)
{
    return choice.at(random.bounded(choice.size()));
}

// A cell whose value the import accepts. Blanks around a name are cut by it, and a comma would be a border.
QString cellText(QRandomGenerator &random, ParameterCell cell)
{
    static const QStringList names{
        QString(), "a",          "two words",   "\"quoted\"", "'; \\ /",
        "电压",    "\U0001F600", "tab\tinside", "\u0001",     QString(500, QLatin1Char('n'))};
    static const QStringList addresses{"0", "65535", "D100", "DB1.DBX0.0", "\"!~"};
    static const QStringList lengths{QString(), "1", "-3", "-", QString(400, QLatin1Char('9'))};
    static const QStringList amplitudes{QString(), "0.5", "-.5", "7.", "."};
    static const QStringList formulas{QString(), "X*2", "X/2+1.5-X"};
    switch (cell) {
    case ParameterCell::Address:
        return oneOf(random, addresses);
    case ParameterCell::Name:
        return oneOf(random, names);
    case ParameterCell::Length:
        return oneOf(random, lengths);
    case ParameterCell::Type:
    case ParameterCell::Permissions:
    case ParameterCell::Method:
        return oneOf(random, ParameterVariant::plc().entries(cell));
    case ParameterCell::Amplitude:
        return oneOf(random, amplitudes);
    case ParameterCell::CollectionFormula:
    case ParameterCell::WriteFormula:
        return oneOf(random, formulas);
    default: // no other cell goes into a file
        return {};
    }
}

RowList randomRowList(QRandomGenerator &random, const ParameterVariant &variant)
{
    RowList rows;
    for (int left = random.bounded(8); left > 0; --left) {
        QVariantList row;
        for (const ParameterColumn &column : variant.columns) {
            if (column.cell != ParameterCell::Button) {
                row.append(cellText(random, column.cell));
            }
        }
        rows.append(row);
    }
    return rows;
}

// One form with one table.
class Form : public ParameterForm
{
public:
    explicit Form(const ParameterVariant &variant)
        : ParameterForm({variant.form, "'%1' is saved."}, variant, nullptr, nullptr, nullptr)
        , m_table(makeTable(this))
    {
    }
    QByteArray exported(const QString &path)
    {
        exportFile(path);
        return Files::contents(path);
    }

protected:
    ParameterTable *currentTable() const override { return m_table; }

private:
    ParameterTable *m_table;
};

} // namespace

void TestParameterCsvFixedPoint::randomRows_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<quint32>("seed");
    const quint32 seed = QRandomGenerator::global()->generate();
    for (const bool modbus : {false, true}) {
        const char *const name = modbus ? "Modbus" : "PLC";
        QTest::addRow("%s, seed 1", name) << modbus << 1u;
        QTest::addRow("%s, seed %u", name, seed) << modbus << seed; // a new one each time
    }
}

void TestParameterCsvFixedPoint::randomRows()
{
    QFETCH(bool, modbus);
    QFETCH(quint32, seed);

    const ParameterVariant &variant = modbus ? ParameterVariant::modbus() : ParameterVariant::plc();
    const QString first = "first.csv";
    const QString second = "second.csv";
    Messages messages;
    QRandomGenerator random(seed);
    for (int round = rounds(100); round > 0; --round) {
        Form out(variant);
        out.loadParameters(randomRowList(random, variant));
        const QByteArray bytes = out.exported(first);
        Form back(variant);
        back.importFile(first);
        QCOMPARE(back.exported(second), bytes);
    }
}

QTEST_MAIN(TestParameterCsvFixedPoint)
#include "tst_parametercsvfixedpoint.moc"

#include "parameters/parametervariant.h"

#include "definitions/choices.h"

#include <QCoreApplication>

namespace {

QStringList listOf(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts) {
        list.append(QString::fromLatin1(text));
    }
    return list;
}

const QStringList &methods()
{
    static const QStringList list =
        listOf({QT_TRANSLATE_NOOP("ParameterTable", "Timed"), QT_TRANSLATE_NOOP("ParameterTable", "Change"),
                QT_TRANSLATE_NOOP("ParameterTable", "Change amplitude")});
    return list;
}

const QStringList &nodeTypes()
{
    static const QStringList list = listOf({QT_TRANSLATE_NOOP("ParameterTable", "GUID Node"),
                                            QT_TRANSLATE_NOOP("ParameterTable", "Numerical Node"),
                                            QT_TRANSLATE_NOOP("ParameterTable", "String Node")});
    return list;
}

// The entries that are shown translated, as stored.
const QStringList &translatedEntries()
{
    static const QStringList list = methods() + nodeTypes();
    return list;
}

// Of the tables with addresses of a controller.
constexpr char controllerAddress[] =
    QT_TRANSLATE_NOOP("ParameterTable",
                      "Invalid input in row %1: only letters, digits, underscores, dots, colons, and "
                      "brackets are allowed.");

ParameterColumn column(ParameterCell cell, int width)
{
    // "Deleat" is the word that files and users know.
    static const char *const headers[] = {
        QT_TRANSLATE_NOOP("ParameterTable", "Address"),
        QT_TRANSLATE_NOOP("ParameterTable", "Name"),
        QT_TRANSLATE_NOOP("ParameterTable", "Type"),
        QT_TRANSLATE_NOOP("ParameterTable", "Length"),
        QT_TRANSLATE_NOOP("ParameterTable", "Permissions"),
        QT_TRANSLATE_NOOP("ParameterTable", "Reporting Method"),
        QT_TRANSLATE_NOOP("ParameterTable", "Change Amplitude"),
        QT_TRANSLATE_NOOP("ParameterTable", "Collection Formula"),
        QT_TRANSLATE_NOOP("ParameterTable", "Write Formula"),
        QT_TRANSLATE_NOOP("ParameterTable", "Deleat"),
        QT_TRANSLATE_NOOP("ParameterTable", "HEX"),
        QT_TRANSLATE_NOOP("ParameterTable", "Data Content"),
        QT_TRANSLATE_NOOP("ParameterTable", "CRC"),
        QT_TRANSLATE_NOOP("ParameterTable", "Spatial Index"),
        QT_TRANSLATE_NOOP("ParameterTable", "Node Type"),
    };
    return {cell, headers[static_cast<int>(cell)], width};
}

// The rules of a table that has no tabs around it.
ParameterVariant withoutTabs(const char *form, const QVector<ParameterColumn> &columns,
                             const char *addressText)
{
    ParameterVariant variant;
    variant.form = form;
    variant.columns = columns;
    variant.addressText = addressText;
    variant.duplicateText = QT_TRANSLATE_NOOP(
        "ParameterTable", "The name of the '%1' line already exists. Please use a different name.");
    variant.loadedDuplicateNamesSelf = true;
    return variant;
}

ParameterVariant plcVariant()
{
    ParameterVariant variant =
        withoutTabs("PLCEditDialog",
                    {column(ParameterCell::Address, 70), column(ParameterCell::Name, 70),
                     column(ParameterCell::Type, 80), column(ParameterCell::Length, 70),
                     column(ParameterCell::Permissions, 70), column(ParameterCell::Method, 120),
                     column(ParameterCell::Amplitude, 80), column(ParameterCell::CollectionFormula, 100),
                     column(ParameterCell::WriteFormula, 100), column(ParameterCell::Button, 35)},
                    controllerAddress);
    variant.hasCsv = true;
    variant.exportTitle = QT_TRANSLATE_NOOP("ParameterTable", "Open CSV file");
    variant.exportFailure = QT_TRANSLATE_NOOP("ParameterTable", "mistake");
    return variant;
}

ParameterVariant modbusVariant()
{
    ParameterVariant variant;
    variant.form = "standardModbusEditDialog";
    variant.columns = {column(ParameterCell::Address, 70),     column(ParameterCell::Name, 70),
                       column(ParameterCell::Type, 80),        column(ParameterCell::Length, 70),
                       column(ParameterCell::Permissions, 70), column(ParameterCell::Button, 35)};
    variant.addressText = controllerAddress;
    variant.duplicateText = QT_TRANSLATE_NOOP(
        "ParameterTable",
        "The name of the '%1' line already exists in this tab. Please use a different name.");
    variant.nameWhileTyping = true;
    variant.commaRefused = true;
    variant.addressOfLatestTable = true;
    variant.onlyNameCheckedInItems = true;
    variant.height = 600;
    variant.hasCsv = true;
    variant.exportTitle = QT_TRANSLATE_NOOP("ParameterTable", "Save CSV file");
    variant.exportFailure = QT_TRANSLATE_NOOP("ParameterTable", "Mistake");
    variant.badAddressAbandons = true;
    return variant;
}

} // namespace

int ParameterVariant::indexOf(ParameterCell cell) const
{
    for (int index = 0; index < columns.size(); ++index) {
        if (columns.at(index).cell == cell) {
            return index;
        }
    }
    return -1;
}

QStringList ParameterVariant::headers() const
{
    QStringList texts;
    for (const ParameterColumn &each : columns) {
        texts.append(translated(each.header));
    }
    return texts;
}

QStringList ParameterVariant::entries(ParameterCell cell) const
{
    static const QStringList types = Choices::list(Choices::dataTypes);
    static const QStringList permissions = Choices::list(Choices::permissions);
    switch (cell) {
    case ParameterCell::Type:
        return types;
    case ParameterCell::Permissions:
        return permissions;
    case ParameterCell::Method:
        return methods().mid(0, indexOf(ParameterCell::Amplitude) < 0 ? 2 : -1);
    case ParameterCell::Hex:
    case ParameterCell::Crc:
        return {QStringLiteral("true"), QStringLiteral("false")};
    case ParameterCell::NodeType:
        return nodeTypes();
    default:
        return {};
    }
}

QString ParameterVariant::translated(const char *source) const
{
    return QCoreApplication::translate(form, source);
}

QString ParameterVariant::shown(const QString &stored) const
{
    return translatedEntries().contains(stored) ? translated(stored.toLatin1().constData()) : stored;
}

QString ParameterVariant::stored(const QString &shownText) const
{
    for (const QString &entry : translatedEntries()) {
        if (shown(entry) == shownText) {
            return entry;
        }
    }
    return shownText;
}

QStringList ParameterVariant::shownEntries(ParameterCell cell) const
{
    QStringList texts = entries(cell);
    for (QString &text : texts) {
        text = shown(text);
    }
    return texts;
}

QString ParameterVariant::amplitudeMethod() const
{
    return shown(methods().last());
}

QString ParameterVariant::loadingText() const
{
    return translated(QT_TRANSLATE_NOOP("ParameterTable", "Loading parameters..."));
}

const ParameterVariant &ParameterVariant::plc()
{
    static const ParameterVariant variant = plcVariant();
    return variant;
}

const ParameterVariant &ParameterVariant::modbus()
{
    static const ParameterVariant variant = modbusVariant();
    return variant;
}

const ParameterVariant &ParameterVariant::customPoll()
{
    static const ParameterVariant variant =
        withoutTabs("standardCustomPollEditDialog",
                    {column(ParameterCell::Name, 100), column(ParameterCell::Hex, 100),
                     column(ParameterCell::DataContent, 200), column(ParameterCell::Crc, 100),
                     column(ParameterCell::Permissions, 110), column(ParameterCell::Method, 150),
                     column(ParameterCell::Button, 35)},
                    nullptr);
    return variant;
}

const ParameterVariant &ParameterVariant::dido()
{
    static const ParameterVariant variant =
        withoutTabs("standardDIOEditDialog",
                    {column(ParameterCell::Address, 120), column(ParameterCell::Name, 120),
                     column(ParameterCell::Permissions, 110), column(ParameterCell::Method, 150),
                     column(ParameterCell::Button, 35)},
                    nullptr);
    return variant;
}

const ParameterVariant &ParameterVariant::opcUa()
{
    static const ParameterVariant variant =
        withoutTabs("standardOPCUAEditDialog",
                    {column(ParameterCell::Address, 100), column(ParameterCell::Name, 70),
                     column(ParameterCell::SpatialIndex, 90), column(ParameterCell::NodeType, 165),
                     column(ParameterCell::Permissions, 70), column(ParameterCell::Method, 175),
                     column(ParameterCell::Amplitude, 80), column(ParameterCell::CollectionFormula, 90),
                     column(ParameterCell::WriteFormula, 90), column(ParameterCell::Type, 85),
                     column(ParameterCell::Button, 35)},
                    QT_TRANSLATE_NOOP(
                        "ParameterTable",
                        "Invalid input in row %1: only letters, digits, underscores, and dots are allowed."));
    return variant;
}

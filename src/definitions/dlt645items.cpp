#include "definitions/dlt645items.h"

#include <QCoreApplication>

namespace Dlt645 {

// clang-format off
// The trailing blank in the 1997 format of the reverse energy is part of the value that the Box expects.
static const std::array<Item, itemCount> table = {{
    // label, then for 2007 and for 1997: identifier, format, length, data type
    {QT_TRANSLATE_NOOP("CMainWindow", "Positive active power rate of 4 electric energy"), {"00010400", "XXXXXX.XX", "4", "float"}, {"9014", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Positive active power rate of 3 electric energy"), {"00010300", "XXXXXX.XX", "4", "float"}, {"9013", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Positive active power rate of 2 electric energy"), {"00010200", "XXXXXX.XX", "4", "float"}, {"9012", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Positive active power rate of 1 electric energy"), {"00010100", "XXXXXX.XX", "4", "float"}, {"9011", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combination active power rate 4 electricity"), {"00000400", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combination active power rate 3 electricity"), {"00000300", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combination active power rate 2 electricity"), {"00000200", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combination active power rate 1 electricity"), {"00000100", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combined reactive power 2 total electrical energy"), {"00040000", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combined reactive power 1 total electrical energy"), {"00030000", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "A-phase positive active energy"), {"00150000", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "B-phase positive active energy"), {"00290000", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "C-phase positive active energy"), {"003D0000", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Reactive constant of electric meter"), {"0400040A", "XXXXXX", "3", "float"}, {"C031", "NNNNNN", "3", "int32"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Active constant of electric meter"), {"04000409", "XXXXXX", "3", "float"}, {"C030", "NNNNNN", "3", "int32"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Combined active total electrical energy"), {"00000000", "XXXXXX.XX", "4", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Reverse active total electrical energy"), {"00020000", "XXXXXX.XX", "4", "float"}, {"9020", "XXXXXX.XX ", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Total reactive energy in the first quadrant"), {"00050000", "XXXXXX.XX", "4", "float"}, {"9130", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Total reactive energy in the second quadrant"), {"00060000", "XXXXXX.XX", "4", "float"}, {"9150", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Total reactive energy in the third quadrant"), {"00070000", "XXXXXX.XX", "4", "float"}, {"9160", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Total reactive energy in the fourth quadrant"), {"00080000", "XXXXXX.XX", "4", "float"}, {"9140", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Positive active total electrical energy"), {"00010000", "XXXXXX.XX", "4", "float"}, {"9010", "XXXXXX.XX", "4", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous total apparent power"), {"02050000", "XX.XXXX", "3", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous A-phase apparent power"), {"02050100", "XX.XXXX", "3", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous B-phase apparent power"), {"02050200", "XX.XXXX", "3", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous C-phase apparent power"), {"02050300", "XX.XXXX", "3", "float"}, {}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous total reactive power"), {"02040000", "XX.XXXX", "3", "float"}, {"B640", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous A-phase reactive power"), {"02040100", "XX.XXXX", "3", "float"}, {"B641", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous B-phase reactive power"), {"02040200", "XX.XXXX", "3", "float"}, {"B642", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous C-phase reactive power"), {"02040300", "XX.XXXX", "3", "float"}, {"B643", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous total active power"), {"02030000", "XX.XXXX", "3", "float"}, {"B630", "XX.XXXX", "3", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous A-phase active power"), {"02030100", "XX.XXXX", "3", "float"}, {"B631", "XX.XXXX", "3", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous B-phase active power"), {"02030200", "XX.XXXX", "3", "float"}, {"B632", "XX.XXXX", "3", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Instantaneous C-phase active power"), {"02030300", "XX.XXXX", "3", "float"}, {"B633", "XX.XXXX", "3", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "Total power factor"), {"02060000", "X.XXX", "3", "float"}, {"B650", "X.XXX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "A-phase power factor"), {"02060100", "X.XXX", "3", "float"}, {"B651", "X.XXX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "B-phase power factor"), {"02060200", "X.XXX", "3", "float"}, {"B652", "X.XXX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "C-phase power factor"), {"02060300", "X.XXX", "3", "float"}, {"B653", "X.XXX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "A-phase current"), {"02020100", "XXX.XXX", "3", "float"}, {"B621", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "B-phase current"), {"02020200", "XXX.XXX", "3", "float"}, {"B622", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "C-phase current"), {"02020300", "XXX.XXX", "3", "float"}, {"B623", "XX.XX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "A-phase voltage"), {"02010100", "XXX.X", "2", "float"}, {"B611", "XXX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "B-phase voltage"), {"02010200", "XXX.X", "2", "float"}, {"B612", "XXX", "2", "float"}},
    {QT_TRANSLATE_NOOP("CMainWindow", "C-phase voltage"), {"02010300", "XXX.X", "2", "float"}, {"B613", "XXX", "2", "float"}},
}};
// clang-format on

const std::array<Item, itemCount> &items()
{
    return table;
}

QVector<const Item *> itemsOf(Version version)
{
    QVector<const Item *> result;
    for (const Item &item : table) {
        if (item.code(version).address) {
            result.append(&item);
        }
    }
    return result;
}

QString label(const Item &item)
{
    return QCoreApplication::translate("CMainWindow", item.label);
}

QString versionText(Version version)
{
    return version == Version2007 ? QStringLiteral("DLT645_2007") : QStringLiteral("DLT645_1997");
}

Version versionOf(const QString &text)
{
    return text == versionText(Version2007) ? Version2007 : Version1997;
}

Labels::Labels()
{
    // Backwards, so that of equal labels the first in the table stays.
    for (auto item = table.rbegin(); item != table.rend(); ++item) {
        const QString text = label(*item);
        for (const Version version : {Version2007, Version1997}) {
            const Code &code = item->code(version);
            if (code.address) {
                (version == Version2007 ? m_by2007 : m_by1997).insert(text, &*item);
                m_byAddress.insert(QLatin1String(code.address), text);
            }
        }
    }
}

const Item *Labels::find(const QString &label, Version version) const
{
    return (version == Version2007 ? m_by2007 : m_by1997).value(label);
}

QString Labels::ofAddress(const QString &address) const
{
    return m_byAddress.value(address);
}

} // namespace Dlt645

// The import of parameter rows: the first byte of the input chooses the table's variant, the rest is the
// file, with the header in front of it unless that byte is large.

#include "fuzztarget.h"
#include "parameters/parametercsv.h"

#include <QTextStream>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const ParameterVariant &variant = data[0] % 2 == 0 ? ParameterVariant::plc() : ParameterVariant::modbus();
    QByteArray file = Fuzz::bytesOf(data + 1, size - 1);
    if (data[0] < 0x80) {
        file.prepend(variant.headers().join(QLatin1Char(',')).toUtf8() + '\n');
    }
    QTextStream stream(&file, QIODevice::ReadOnly | QIODevice::Text);
    const RowImport import = ParameterCsv::read(stream.readAll(), variant);
    Fuzz::require(import.refusal || import.badChoices <= import.rows.size(),
                  "a bad choice is told once a row");
    Fuzz::require(!import.refusal || import.rows.isEmpty(), "what is refused brings no rows");
    for (const QVariantList &row : import.rows) {
        Fuzz::require(row.size() >= 6 && row.size() <= variant.columns.size(), "a row has its columns");
        for (const QVariant &cell : row) {
            const QString text = cell.toString();
            Fuzz::require(!text.contains(QLatin1Char(',')) && text == text.trimmed(),
                          "a cell is trimmed and has no comma");
        }
    }
    return 0;
}

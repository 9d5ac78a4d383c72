// The paste of parameter rows: the first byte of the input chooses the table's variant, the rest is what the
// clipboard holds.

#include "fuzztarget.h"
#include "parameters/parameterclip.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const ParameterVariant &variant = data[0] % 2 == 0 ? ParameterVariant::plc() : ParameterVariant::modbus();
    const QString text = QString::fromUtf8(Fuzz::bytesOf(data + 1, size - 1));
    const RowImport import = ParameterClip::read(text, variant);
    Fuzz::require(!import.refusal || import.rows.isEmpty(), "what is refused brings no rows");
    Fuzz::require(import.badChoices <= import.rows.size(), "a bad choice is a row");
    Fuzz::require(import.faults.told.size() <= RowFaults::mostTold, "what is told is bounded");
    QList<QStringList> texts;
    for (const QVariantList &row : import.rows) {
        Fuzz::require(row.size() >= 5 && row.size() < variant.columns.size(), "a row has its columns");
        QStringList cells;
        for (const QVariant &cell : row) {
            cells.append(cell.toString());
            Fuzz::require(cells.last() == cells.last().trimmed(), "a cell is trimmed");
        }
        texts.append(cells);
    }
    // A check ends at the first bad field. Where the row stays all the same, what is behind it may be bad,
    // too.
    const bool checked = variant.badAddressAbandons && import.badChoices == 0;
    const QString copied = ParameterClip::write(texts);
    if (checked && copied.size() <= ParameterClip::mostText) {
        const RowList again = ParameterClip::read(copied, variant).rows;
        // The first row may be like the header.
        Fuzz::require(again == import.rows || again == import.rows.mid(1), "copied rows come back");
    }
    return 0;
}

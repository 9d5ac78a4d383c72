#include "parametertable/tablenote.h"

#include <QFileInfo>
#include <QTextDocument>

TableNote::TableNote(const ParameterVariant &variant, QWidget *parent)
    : QuietLine(parent)
    , m_variant(variant)
{
    setObjectName(QStringLiteral("tableNote"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a file's name may be long
}

TableNote *TableNote::of(const QWidget *table)
{
    return table ? table->parentWidget()->findChild<TableNote *>() : nullptr;
}

void TableNote::tellImport(const RowImport &import, const QString &path)
{
    const QString text =
        m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Rows imported from %1: %2"));
    tell(text.arg(QFileInfo(path).fileName(), QString::number(import.rows.size())), import.faults);
}

void TableNote::tellPaste(const RowImport &import)
{
    const QString text = m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Rows pasted: %1"));
    tell(import.refusal ? m_variant.translated(import.refusal) : text.arg(import.rows.size()), import.faults);
}

void TableNote::tellExport(int rows, const QString &path, bool isWhole)
{
    const QString text = m_variant.translated(
        isWhole ? QT_TRANSLATE_NOOP("ParameterTable", "Rows exported to %1: %2")
                : QT_TRANSLATE_NOOP("ParameterTable", "%1 could not be written as a whole"));
    tell(isWhole ? text.arg(QFileInfo(path).fileName(), QString::number(rows))
                 : text.arg(QFileInfo(path).fileName()),
         {});
}

void TableNote::tell(const QString &text, const RowFaults &faults)
{
    const QString withFaults =
        m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "%1; with faults: %2"));
    setText(faults.count > 0 ? withFaults.arg(text, QString::number(faults.count)) : text);
    QStringList lines{this->text()};
    lines += faults.told;
    if (faults.count > faults.told.size()) {
        lines.append(m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "and %1 more"))
                         .arg(faults.count - faults.told.size()));
    }
    setToolTip(Qt::convertFromPlainText(lines.join(QLatin1Char('\n')), Qt::WhiteSpaceNormal));
}

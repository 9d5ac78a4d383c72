#include "parametertable/parameterform.h"

#include "parameters/parametercsv.h"
#include "parameters/parameterrules.h"
#include "parametertable/parametertable.h"
#include "parametertable/rowclipboard.h"
#include "parametertable/tablebuttons.h"
#include "parametertable/tablenote.h"
#include "widgets/choosefile.h"
#include "widgets/tell.h"

#include <QFile>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QStandardItem>
#include <QTextStream>

#include <algorithm>

namespace {

constexpr char warning[] = QT_TRANSLATE_NOOP("ParameterTable", "Warning");
constexpr char error[] = QT_TRANSLATE_NOOP("ParameterTable", "error");
constexpr char amplitudeFault[] =
    QT_TRANSLATE_NOOP("ParameterTable", "Only positive integers and floating-point numbers are allowed.");

} // namespace

ParameterForm::ParameterForm(const Names &names, const ParameterVariant &variant, QStandardItem *item,
                             Workspace *workspace, QWidget *parent)
    : DefinitionForm(names, item, workspace, parent)
    , m_variant(variant)
{
}

ParameterTable *ParameterForm::makeTable(QWidget *parent)
{
    auto *table = new ParameterTable(m_variant, this, parent);
    const auto connectTo = [this, table](auto signal, auto slot) {
        connect(table, signal, &m_checks, [this, slot](auto... arguments) { (this->*slot)(arguments...); });
    };
    connectTo(&ParameterTable::edited, &ParameterForm::onEdited);
    connectTo(&ParameterTable::lengthEntered, &ParameterForm::checkLength);
    connectTo(&ParameterTable::amplitudeEntered, &ParameterForm::checkThreshold);
    connectTo(&ParameterTable::removePressed, &ParameterForm::removeParameter);
    connect(new RowClipboard(m_variant, table), &RowClipboard::pasted, table,
            [table](const RowImport &import) {
                if (TableNote *note = TableNote::of(table)) {
                    note->tellPaste(import);
                }
            });
    connectTo(&QTableWidget::cellChanged, &ParameterForm::validateName);
    if (!m_variant.onlyNameCheckedInItems) {
        for (const auto validate : {&ParameterForm::validateLength, &ParameterForm::validateAddr,
                                    &ParameterForm::validateChange, &ParameterForm::validateFormula}) {
            connectTo(&QTableWidget::cellChanged, validate);
        }
    }
    return table;
}

QWidget *ParameterForm::makeTableButtons(QWidget *parent)
{
    return new TableButtons(m_variant, this, parent);
}

void ParameterForm::addParameter()
{
    if (ParameterTable *table = currentTable()) {
        table->appendRow();
    }
    log("addParameter");
}

void ParameterForm::startParameter()
{
    addParameter();
    if (ParameterTable *table = currentTable()) {
        table->typeInto(table->rowCount() - 1);
    }
}

void ParameterForm::removeParameter()
{
    ParameterTable *table = currentTable();
    if (table && table->currentRow() >= 0) {
        if (!endEditing(table)) {
            return;
        }
        table->removeRow(table->currentRow());
    }
    log("removeParameter");
}

void ParameterForm::removeAllParameters()
{
    if (ParameterTable *table = currentTable()) {
        if (!endEditing(table)) {
            return;
        }
        table->setRowCount(0);
    }
    log("removeAllParameters");
}

bool ParameterForm::endEditing(ParameterTable *table)
{
    if (!table) {
        return true;
    }
    const QPointer<ParameterForm> form(this);
    const QPointer<ParameterTable> edited(table);
    table->endEditing();
    return form && edited;
}

void ParameterForm::loadParameters(const QList<QVariantList> &rows)
{
    ParameterTable *table = currentTable();
    if (!table) {
        Tell::warning(this, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Error")),
                      missingTableText());
        return;
    }
    table->fill(rows);
    note([](TableNote *line) { line->tellNothing(); });
    log("loadParameters");
}

void ParameterForm::importParameters()
{
    if (!m_variant.hasCsv) {
        return;
    }
    const QString path = chooseOpenFile(
        this, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Open CSV file")), lastUsedFolder(),
        m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "CSV File (*.csv)")));
    if (!path.isEmpty()) {
        importFile(path);
    }
}

void ParameterForm::exportParameters()
{
    if (!m_variant.hasCsv) {
        return;
    }
    // Compat: one variant has the title of an open dialog here.
    const QString path = chooseSaveFile(
        this, m_variant.translated(m_variant.exportTitle), lastUsedFolder(),
        m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "CSV file (*.csv)")), exportName());
    if (!path.isEmpty()) {
        exportFile(path);
    }
}

void ParameterForm::importFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        warn(QT_TRANSLATE_NOOP("ParameterTable", "mistake"),
             QT_TRANSLATE_NOOP("ParameterTable", "Unable to open file for reading."));
        return;
    }
    const RowImport import = ParameterCsv::read(QTextStream(&file).readAll(), m_variant);
    file.close();
    const QPointer<ParameterForm> guard(this);
    for (int told = 0; told < import.badChoices && guard; ++told) {
        warn(error,
             QT_TRANSLATE_NOOP(
                 "ParameterTable",
                 "The multiple-choice content in the CSV row does not match the expected format. "
                 "Set as default value"));
    }
    if (!guard) {
        return;
    }
    if (import.refusal) {
        note([&](TableNote *line) { line->tellImport(import, path); });
        warn(error, import.refusal);
        return;
    }
    if (!endEditing(currentTable()) || !endEditing(latestTable())) {
        return;
    }
    // Compat: empties the table that was made last, also when another one is filled.
    if (ParameterTable *latest = latestTable()) {
        latest->setRowCount(0);
        if (TableNote *line = TableNote::of(latest)) {
            line->tellNothing(); // of rows that are gone
        }
    }
    loadParameters(import.rows);
    if (guard) {
        note([&](TableNote *line) { line->tellImport(import, path); });
        log("importParameters");
    }
}

void ParameterForm::exportFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        warn(m_variant.exportFailure,
             QT_TRANSLATE_NOOP("ParameterTable", "Unable to open file for writing."));
        return;
    }
    // Without a table the file stays empty.
    if (const ParameterTable *table = currentTable()) {
        QTextStream(&file) << ParameterCsv::write(table->texts(), m_variant);
        const bool isWhole = file.flush() && file.error() == QFile::NoError;
        note([&](TableNote *line) { line->tellExport(table->rowCount(), path, isWhole); });
    }
    file.close();
    log("exportParameters");
}

QString ParameterForm::exportName() const
{
    return item() ? item()->text() : QString();
}

void ParameterForm::validateName(int row, int column)
{
    QTableWidgetItem *item = itemOf(row, column);
    if (!item || column != m_variant.indexOf(ParameterCell::Name) || item->text().isEmpty()) {
        return;
    }
    const QString name = item->text();
    if (const char *fault = ParameterRules::faultOf(m_variant, ParameterCell::Name, name)) {
        tell(fault, row);
        item->setText(QString());
        return;
    }
    const int other = ParameterRules::rowWithName(names(false), row, name);
    if (other >= 0) {
        item->setText(QString());
        tell(m_variant.duplicateText, m_variant.loadedDuplicateNamesSelf ? row : other);
    }
}

void ParameterForm::validateAddr(int row, int column)
{
    checkItem(row, column, {ParameterCell::Address});
}

void ParameterForm::validateChange(int row, int column)
{
    checkItem(row, column, {ParameterCell::Amplitude});
}

void ParameterForm::validateFormula(int row, int column)
{
    checkItem(row, column, {ParameterCell::CollectionFormula, ParameterCell::WriteFormula});
}

void ParameterForm::validateLength(int row, int column)
{
    QTableWidgetItem *item = itemOf(row, column);
    const bool isIndex = column == m_variant.indexOf(ParameterCell::SpatialIndex);
    if (!item || (!isIndex && column != m_variant.indexOf(ParameterCell::Length))) {
        return;
    }
    const QString text = item->text();
    {
        const QSignalBlocker quiet(item->tableWidget());
        if (ParameterRules::isCount(text)) {
            item->setData(Qt::UserRole, text);
            return;
        }
        item->setText(item->data(Qt::UserRole).toString());
    }
    warn(warning,
         isIndex ? QT_TRANSLATE_NOOP("ParameterTable",
                                     "The spatial index value type can only be filled with numbers.")
                 : QT_TRANSLATE_NOOP("ParameterTable", "Length must be a positive integer."));
}

void ParameterForm::validateNameOnChange(int row, int column, QString)
{
    watch(editorOf(currentTable(), row, column), row, ParameterCell::Name);
}

void ParameterForm::validateAddrOnChange(int row, int column, QString)
{
    watch(editorOf(latestTable(), row, column), row, ParameterCell::Address);
}

void ParameterForm::validateChangeOnChange(int row, int column, QString)
{
    watch(editorOf(currentTable(), row, column), row, ParameterCell::Amplitude);
}

void ParameterForm::validateFormulaOnChange(int row, int column, QString)
{
    watch(editorOf(currentTable(), row, column), row, ParameterCell::CollectionFormula);
}

void ParameterForm::updateChangeAmplitudeCell(int row, bool enabled)
{
    QLineEdit *editor = editorOf(currentTable(), row, m_variant.indexOf(ParameterCell::Amplitude));
    if (editor) {
        editor->setEnabled(enabled);
        if (!enabled) {
            editor->clear();
        }
    }
}

void ParameterForm::updateloadChangeAmplitudeCell(int row, bool enabled)
{
    QTableWidgetItem *item = itemOf(row, m_variant.indexOf(ParameterCell::Amplitude));
    if (item) {
        item->setFlags(enabled ? item->flags() | Qt::ItemIsEditable : item->flags() & ~Qt::ItemIsEditable);
        if (!enabled) {
            item->setText(QString());
        }
    }
}

void ParameterForm::checkItem(int row, int column, std::initializer_list<ParameterCell> cells)
{
    QTableWidgetItem *item = itemOf(row, column);
    const ParameterCell cell = m_variant.columns.value(column).cell;
    if (!item || std::find(cells.begin(), cells.end(), cell) == cells.end()) {
        return;
    }
    if (const char *fault = ParameterRules::faultOf(m_variant, cell, item->text().trimmed())) {
        tell(fault, row);
        item->setText(QString());
    }
}

void ParameterForm::onEdited(QLineEdit *editor, int row, ParameterCell cell)
{
    if (cell == ParameterCell::Address && m_variant.addressOfLatestTable) {
        editor = editorOf(latestTable(), row, m_variant.indexOf(cell));
    }
    watch(editor, row, cell);
}

void ParameterForm::watch(QLineEdit *editor, int row, ParameterCell cell)
{
    constexpr char watched[] = "checkedAtEndOfEditing";
    if (!editor) {
        return;
    }
    if (cell == ParameterCell::Name && m_variant.nameWhileTyping) {
        checkName(editor, row);
    } else if (!editor->property(watched).toBool()) {
        editor->setProperty(watched, true);
        connect(editor, &QLineEdit::editingFinished, &m_checks,
                [this, editor, row, cell] { check(editor, row, cell); });
    }
}

void ParameterForm::check(QLineEdit *editor, int row, ParameterCell cell)
{
    if (cell == ParameterCell::Name) {
        checkName(editor, row);
        return;
    }
    const char *fault = ParameterRules::faultOf(m_variant, cell, editor->text().trimmed());
    if (!fault) {
        return;
    }
    tell(fault, row);
    editor->clear();
    if (cell == ParameterCell::Amplitude && workspace()) {
        warnOnce(amplitudeFault);
    }
}

void ParameterForm::checkName(QLineEdit *editor, int row)
{
    const bool trimmed = !m_variant.nameWhileTyping;
    const QString name = trimmed ? editor->text().trimmed() : editor->text();
    if (name.trimmed().isEmpty()) {
        return;
    }
    if (const char *fault = ParameterRules::faultOf(m_variant, ParameterCell::Name, name)) {
        tell(fault, row);
        editor->clear();
        return;
    }
    const int other = ParameterRules::rowWithName(names(trimmed), row, name);
    if (other >= 0) {
        editor->clear();
        tell(m_variant.duplicateText, other);
    }
}

void ParameterForm::checkLength(QLineEdit *editor)
{
    if (ParameterRules::isCount(editor->text())) {
        return;
    }
    const QPointer<QLineEdit> guarded(editor);
    // Compat: there is no upper bound, whatever the message says.
    const bool told =
        warnOnce(QT_TRANSLATE_NOOP("ParameterTable", "Length must be a positive integer between 1 and 10."));
    if (told && guarded) {
        guarded->setText(QStringLiteral("1"));
    }
}

void ParameterForm::checkThreshold(QLineEdit *editor)
{
    const QPointer<QLineEdit> guarded(editor);
    if (!ParameterRules::isThreshold(editor->text()) && warnOnce(amplitudeFault) && guarded) {
        guarded->clear();
    }
}

QTableWidgetItem *ParameterForm::itemOf(int row, int column) const
{
    const ParameterTable *table = currentTable();
    return table ? table->item(row, column) : nullptr;
}

QLineEdit *ParameterForm::editorOf(const ParameterTable *table, int row, int column) const
{
    return table ? table->editor(row, column) : nullptr;
}

QStringList ParameterForm::names(bool trimmed) const
{
    const ParameterTable *table = currentTable();
    const int column = m_variant.indexOf(ParameterCell::Name);
    QStringList names;
    for (int row = 0; table && row < table->rowCount(); ++row) {
        const QString name = table->text(row, column);
        names.append(trimmed ? name.trimmed() : name);
    }
    return names;
}

void ParameterForm::tell(const char *source, int row)
{
    const QString text = m_variant.translated(source);
    appendMessage(text.contains(QLatin1String("%1")) ? text.arg(row + 1) : text);
}

void ParameterForm::note(const std::function<void(TableNote *)> &told)
{
    if (TableNote *line = TableNote::of(currentTable())) {
        told(line);
    }
}

void ParameterForm::warn(const char *title, const char *source)
{
    Tell::warning(this, m_variant.translated(title), m_variant.translated(source));
}

bool ParameterForm::warnOnce(const char *source)
{
    if (m_warning) {
        return false;
    }
    m_warning = true;
    const QPointer<ParameterForm> guard(this);
    warn(warning, source);
    if (guard) {
        m_warning = false;
    }
    return true;
}

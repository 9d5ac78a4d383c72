// The cell rules of the parameter table.
#include "model/workspace.h"
#include "parametertable/parametereditor.h"
#include "widgets/tell.h"

#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTableWidget>

namespace {

// Wider than the words of the message that goes with it: any printable ASCII without blanks.
const QRegularExpression &addressPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^[\\x21-\\x7E]+$"));
    return pattern;
}

const QRegularExpression &formulaPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^[\\d.+\\-*/X]+$"));
    return pattern;
}

// A leading minus passes here, though the box speaks of positive numbers.
const QRegularExpression &amplitudePattern()
{
    static const QRegularExpression pattern(QStringLiteral("^-?\\d*\\.?\\d+$"));
    return pattern;
}

bool matches(const QRegularExpression &pattern, const QString &text)
{
    return text.isEmpty() || pattern.match(text).hasMatch();
}

QTableWidgetItem *itemAt(QTableWidget *table, int row, int column)
{
    return table ? table->item(row, column) : nullptr;
}

QLineEdit *editorAt(QTableWidget *table, int row, int column)
{
    return table ? qobject_cast<QLineEdit *>(table->cellWidget(row, column)) : nullptr;
}

constexpr char amplitudeBox[] =
    QT_TRANSLATE_NOOP("ParameterTable", "Only positive integers and floating-point numbers are allowed.");

} // namespace

bool ParameterEditor::isCount(const QString &text)
{
    bool number = false;
    return text.trimmed().toInt(&number) >= 1 && number;
}

void ParameterEditor::validateName(int row, int column)
{
    QTableWidget *table = m_current();
    QTableWidgetItem *item = itemAt(table, row, column);
    if (!item || column != m_variant.indexOf(ParameterCell::Name) || item->text().isEmpty()) {
        return;
    }
    const QString name = item->text();
    if (!commaPasses(name)) {
        item->setText(QString());
        return;
    }
    const int other = rowWithName(table, row, name, false);
    if (other >= 0) {
        item->setText(QString());
        tell(m_variant.duplicateText, m_variant.loadedDuplicateNamesSelf ? row : other);
    }
}

void ParameterEditor::validateAddr(int row, int column)
{
    QTableWidgetItem *item = itemAt(m_current(), row, column);
    if (item && column == m_variant.indexOf(ParameterCell::Address)
        && !addressPasses(row, item->text().trimmed())) {
        item->setText(QString());
    }
}

void ParameterEditor::validateFormula(int row, int column)
{
    QTableWidgetItem *item = itemAt(m_current(), row, column);
    if (item && isFormula(column) && !formulaPasses(row, item->text().trimmed())) {
        item->setText(QString());
    }
}

void ParameterEditor::validateLength(int row, int column)
{
    QTableWidget *table = m_current();
    QTableWidgetItem *item = itemAt(table, row, column);
    const bool index = column == m_variant.indexOf(ParameterCell::SpatialIndex);
    if (!item || (!index && column != m_variant.indexOf(ParameterCell::Length))) {
        return;
    }
    const QString text = item->text();
    if (isCount(text)) {
        const QSignalBlocker quiet(table);
        item->setData(Qt::UserRole, text);
        return;
    }
    {
        const QSignalBlocker quiet(table);
        item->setText(item->data(Qt::UserRole).toString());
    }
    warn(index ? QT_TRANSLATE_NOOP("ParameterTable",
                                   "The spatial index value type can only be filled with numbers.")
               : QT_TRANSLATE_NOOP("ParameterTable", "Length must be a positive integer."));
}

void ParameterEditor::validateChange(int row, int column)
{
    QTableWidgetItem *item = itemAt(m_current(), row, column);
    if (item && column == m_variant.indexOf(ParameterCell::Amplitude)
        && !amplitudePasses(row, item->text().trimmed())) {
        item->setText(QString());
    }
}

void ParameterEditor::validateNameOnChange(int row, int column)
{
    watchName(editorAt(m_current(), row, column), row);
}

void ParameterEditor::validateAddrOnChange(int row, int column)
{
    checkAtEndOfEditing(editorAt(m_latest(), row, column), row, &ParameterEditor::checkAddress);
}

void ParameterEditor::validateFormulaOnChange(int row, int column)
{
    checkAtEndOfEditing(editorAt(m_current(), row, column), row, &ParameterEditor::checkFormula);
}

void ParameterEditor::validateChangeOnChange(int row, int column)
{
    checkAtEndOfEditing(editorAt(m_current(), row, column), row, &ParameterEditor::checkAmplitude);
}

void ParameterEditor::watchName(QLineEdit *editor, int row)
{
    if (editor && m_variant.nameWhileTyping) {
        checkName(row, editor);
    } else {
        checkAtEndOfEditing(editor, row, &ParameterEditor::checkName);
    }
}

void ParameterEditor::checkAtEndOfEditing(QLineEdit *editor, int row, Check check)
{
    constexpr char checked[] = "checkedAtEndOfEditing";
    if (editor && !editor->property(checked).toBool()) {
        editor->setProperty(checked, true);
        connect(editor, &QLineEdit::editingFinished, this,
                [this, row, editor, check] { (this->*check)(row, editor); });
    }
}

void ParameterEditor::checkName(int row, QLineEdit *editor)
{
    const QTableWidget *table = m_current();
    const bool trimmed = !m_variant.nameWhileTyping;
    const QString name = trimmed ? editor->text().trimmed() : editor->text();
    if (!table || name.trimmed().isEmpty()) {
        return;
    }
    if (!commaPasses(name)) {
        editor->clear();
        return;
    }
    const int other = rowWithName(table, row, name, trimmed);
    if (other >= 0) {
        editor->clear();
        tell(m_variant.duplicateText, other);
    }
}

void ParameterEditor::checkAddress(int row, QLineEdit *editor)
{
    if (!addressPasses(row, editor->text().trimmed())) {
        editor->clear();
    }
}

void ParameterEditor::checkFormula(int row, QLineEdit *editor)
{
    if (!formulaPasses(row, editor->text().trimmed())) {
        editor->clear();
    }
}

void ParameterEditor::checkAmplitude(int row, QLineEdit *editor)
{
    if (amplitudePasses(row, editor->text().trimmed())) {
        return;
    }
    editor->clear();
    if (m_workspace) {
        warnOnce(amplitudeBox);
    }
}

void ParameterEditor::checkLength(QLineEdit *editor)
{
    if (isCount(editor->text())) {
        return;
    }
    const QPointer<QLineEdit> guarded(editor);
    // No upper bound on purpose: the 10 lives in the message only.
    const bool told =
        warnOnce(QT_TRANSLATE_NOOP("ParameterTable", "Length must be a positive integer between 1 and 10."));
    if (told && guarded) {
        guarded->setText(QStringLiteral("1"));
    }
}

void ParameterEditor::checkNumber(QLineEdit *editor)
{
    bool number = false;
    const double value = editor->text().trimmed().toDouble(&number);
    // Compat: "nan" stands on purpose, since it is a number and not negative; so does "inf".
    if (number && !(value < 0)) {
        return;
    }
    const QPointer<QLineEdit> guarded(editor);
    if (warnOnce(amplitudeBox) && guarded) {
        guarded->clear();
    }
}

bool ParameterEditor::addressPasses(int row, const QString &text)
{
    const bool passes = !m_variant.addressText || matches(addressPattern(), text);
    if (!passes) {
        tell(m_variant.addressText, row);
    }
    return passes;
}

bool ParameterEditor::formulaPasses(int row, const QString &text)
{
    const bool passes = matches(formulaPattern(), text);
    if (!passes) {
        tell(QT_TRANSLATE_NOOP("ParameterTable",
                               "Invalid input in row %1: only numbers, operators (+, -, *, /) and 'X' are "
                               "allowed."),
             row);
    }
    return passes;
}

bool ParameterEditor::amplitudePasses(int row, const QString &text)
{
    const bool passes = matches(amplitudePattern(), text);
    if (!passes) {
        tell(QT_TRANSLATE_NOOP("ParameterTable",
                               "Invalid input in row %1: only integers and floating-point "
                               "numbers are allowed."),
             row);
    }
    return passes;
}

bool ParameterEditor::commaPasses(const QString &text)
{
    const bool passes = !m_variant.commaRefused || !text.contains(QLatin1Char(','));
    if (!passes) {
        tell(QT_TRANSLATE_NOOP("ParameterTable",
                               "The name cannot contain a comma. Please use a different name."),
             0);
    }
    return passes;
}

int ParameterEditor::rowWithName(const QTableWidget *table, int except, const QString &name,
                                 bool trimmed) const
{
    const int column = m_variant.indexOf(ParameterCell::Name);
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString other = parameterCellText(table, row, column);
        if (row != except && (trimmed ? other.trimmed() : other) == name) {
            return row;
        }
    }
    return -1;
}

bool ParameterEditor::isFormula(int column) const
{
    return column >= 0
        && (column == m_variant.indexOf(ParameterCell::CollectionFormula)
            || column == m_variant.indexOf(ParameterCell::WriteFormula));
}

void ParameterEditor::tell(const char *source, int row)
{
    if (m_workspace) {
        const QString text = m_variant.translated(source);
        m_workspace->appendMessage(text.contains(QLatin1String("%1")) ? text.arg(row + 1) : text);
    }
}

void ParameterEditor::warn(const char *source)
{
    Tell::warning(m_form, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Warning")),
                  m_variant.translated(source));
}

bool ParameterEditor::warnOnce(const char *source)
{
    if (m_warning) {
        return false;
    }
    m_warning = true;
    const QPointer<ParameterEditor> guard(this);
    warn(source);
    if (guard) {
        m_warning = false;
    }
    return true;
}

#include "parametertable/parametereditor.h"

#include "forms/formpage.h"
#include "log/activitylog.h"
#include "widgets/tablecopy.h"
#include "widgets/tableheader.h"
#include "widgets/tell.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

#include <algorithm>

namespace {

constexpr int buttonSize = 35; // pixels

// Showing a widget posts an update of its own for it, and each widget that is repainted on its own looks at
// all of its siblings: with thousands in one table that takes minutes. One update of each window stands for
// all of them.
void repaintAtOnce()
{
    QCoreApplication::removePostedEvents(nullptr, QEvent::UpdateLater);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        window->update();
    }
}

} // namespace

QString parameterCellText(const QTableWidget *table, int row, int column)
{
    if (const QTableWidgetItem *item = table->item(row, column)) {
        return item->text();
    }
    QWidget *widget = table->cellWidget(row, column);
    if (const auto *editor = qobject_cast<QLineEdit *>(widget)) {
        return editor->text();
    }
    if (const auto *list = qobject_cast<QComboBox *>(widget)) {
        return list->currentText();
    }
    return {};
}

ParameterEditor::ParameterEditor(const ParameterVariant &variant, QWidget *form, Workspace *workspace,
                                 Lookup current, Lookup latest)
    : QObject(form)
    , m_variant(variant)
    , m_form(form)
    , m_workspace(workspace)
    , m_deleteIcon(QStringLiteral(":/adsdemo/images/Delete.svg"))
    , m_current(std::move(current))
    , m_latest(std::move(latest))
{
}

void ParameterEditor::prepare(QTableWidget *table)
{
    table->setColumnCount(m_variant.columns.size());
    table->setHorizontalHeaderLabels(m_variant.headers());
    table->horizontalHeader()->setMinimumSectionSize(buttonSize); // else a style may widen the last column
    for (int column = 0; column < m_variant.columns.size(); ++column) {
        table->setColumnWidth(column, m_variant.columns.at(column).width);
    }
    TableHeader::explain(table);
    table->verticalHeader()->setDefaultSectionSize(buttonSize + 1); // the grid takes a pixel
    table->setWordWrap(false);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    table->setStyleSheet(QStringLiteral("QTableWidget { border: none; }"));
    TableHeader::makeGrey(table);
    TableCopy::install(table);
    table->setTabKeyNavigation(false); // Tab leads through the cell widgets and out of the table
    table->setInputMethodHints(Qt::ImhHiddenText);
    if (m_variant.height > 0) {
        table->setFixedHeight(m_variant.height);
    }
    connect(table, &QTableWidget::cellChanged, this, &ParameterEditor::validateName);
    if (!m_variant.onlyNameCheckedInItems) {
        connect(table, &QTableWidget::cellChanged, this, &ParameterEditor::validateLength);
        connect(table, &QTableWidget::cellChanged, this, &ParameterEditor::validateAddr);
        connect(table, &QTableWidget::cellChanged, this, &ParameterEditor::validateChange);
        connect(table, &QTableWidget::cellChanged, this, &ParameterEditor::validateFormula);
    }
}

QWidget *ParameterEditor::makeButtons(QWidget *parent)
{
    static const struct {
        const char *text;
        const char *icon;
        const char *name;
        void (ParameterEditor::*pressed)();
        bool isOfCsv;
    } table[] = {
        {QT_TRANSLATE_NOOP("ParameterTable", "Add"), ":/adsdemo/images/add.svg", "addButton",
         &ParameterEditor::addParameter, false},
        {QT_TRANSLATE_NOOP("ParameterTable", "Remove All"), ":/adsdemo/images/cancel.svg", "removeAllButton",
         &ParameterEditor::removeAllParameters, false},
        {QT_TRANSLATE_NOOP("ParameterTable", "Import"), ":/adsdemo/images/read.svg", "importButton",
         &ParameterEditor::importParameters, true},
        {QT_TRANSLATE_NOOP("ParameterTable", "Export"), ":/adsdemo/images/write.svg", "exportButton",
         &ParameterEditor::exportParameters, true},
    };
    auto *buttons = new QWidget(parent);
    auto *row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    for (const auto &entry : table) {
        if (m_variant.hasCsv || !entry.isOfCsv) {
            QPushButton *button =
                FormPage::button(m_variant.translated(entry.text), QLatin1String(entry.icon), buttons);
            button->setObjectName(QLatin1String(entry.name));
            connect(button, &QPushButton::clicked, this, entry.pressed);
            row->addWidget(button);
        }
    }
    row->addStretch();
    return buttons;
}

void ParameterEditor::addParameter()
{
    if (QTableWidget *table = m_current()) {
        appendAddedRow(table);
    }
    log("addParameter");
}

void ParameterEditor::removeParameter()
{
    QTableWidget *table = m_current();
    if (table && table->currentRow() >= 0) {
        table->removeRow(table->currentRow());
    }
    log("removeParameter");
}

void ParameterEditor::removeAllParameters()
{
    if (QTableWidget *table = m_current()) {
        table->setRowCount(0);
    }
    log("removeAllParameters");
}

void ParameterEditor::loadParameters(const RowList &rows)
{
    QTableWidget *table = m_current();
    if (!table) {
        Tell::warning(m_form, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Error")),
                      m_missing());
        return;
    }
    fill(table, rows);
    log("loadParameters");
}

void ParameterEditor::fill(QTableWidget *table, const RowList &rows)
{
    const QSignalBlocker quiet(table);
    // Thousands of cell widgets are made and shown in one go below a hidden parent. Blocking updates would
    // not do: allowing them again repaints each widget on its own, at a cost that is quadratic in their
    // number.
    table->viewport()->hide();
    table->setRowCount(0);
    // All rows at once: inserting them one by one would move the cell widgets made so far each time.
    table->setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        fillLoadedRow(table, row, rows.at(row));
    }
    table->doItemsLayout(); // else the next layout moves, and so repaints, each widget
    table->viewport()->show();
    repaintAtOnce();
}

RowList ParameterEditor::rows(const QTableWidget *table) const
{
    RowList rows;
    rows.reserve(table->rowCount());
    const QVector<int> translated{m_variant.indexOf(ParameterCell::Method),
                                  m_variant.indexOf(ParameterCell::NodeType)};
    for (int row = 0; row < table->rowCount(); ++row) {
        QVariantList values;
        for (int column = 0; column < table->columnCount(); ++column) {
            const QString text = parameterCellText(table, row, column);
            if (!text.isNull() || table->item(row, column)) {
                values.append(translated.contains(column) ? m_variant.stored(text) : text);
            }
        }
        rows.append(values);
    }
    return rows;
}

void ParameterEditor::updateChangeAmplitudeCell(int row, bool enabled)
{
    QTableWidget *table = m_current();
    const int column = m_variant.indexOf(ParameterCell::Amplitude);
    auto *editor = table ? qobject_cast<QLineEdit *>(table->cellWidget(row, column)) : nullptr;
    if (editor) {
        editor->setEnabled(enabled);
        if (!enabled) {
            editor->clear();
        }
    }
}

void ParameterEditor::updateloadChangeAmplitudeCell(int row, bool enabled)
{
    QTableWidget *table = m_current();
    QTableWidgetItem *item = table ? table->item(row, m_variant.indexOf(ParameterCell::Amplitude)) : nullptr;
    if (item) {
        item->setFlags(enabled ? item->flags() | Qt::ItemIsEditable : item->flags() & ~Qt::ItemIsEditable);
        if (!enabled) {
            item->setText(QString());
        }
    }
}

void ParameterEditor::appendAddedRow(QTableWidget *table)
{
    const int row = table->rowCount();
    table->insertRow(row);
    RowParts parts;
    for (int column = 0; column < m_variant.columns.size(); ++column) {
        const ParameterCell cell = m_variant.columns.at(column).cell;
        if (cell == ParameterCell::SpatialIndex) {
            table->setItem(row, column, makeSpatialIndex(QStringLiteral("1")));
        } else if (cell != ParameterCell::Button) {
            table->setCellWidget(row, column, makeEditor(table, cell, QString(), &parts));
        }
    }
    if (parts.length) {
        parts.length->setText(QStringLiteral("1"));
    }
    addButton(table, row);
    connectAddedRow(row, parts);
    emit rowMade(table, row);
}

void ParameterEditor::fillLoadedRow(QTableWidget *table, int row, const QVariantList &values)
{
    RowParts parts;
    for (int column = 0; column < qMin(values.size(), table->columnCount()); ++column) {
        const QString text = values.at(column).toString();
        switch (m_variant.columns.at(column).cell) {
        case ParameterCell::Type:
        case ParameterCell::Length:
        case ParameterCell::Permissions:
        case ParameterCell::Method:
        case ParameterCell::Amplitude:
        case ParameterCell::Hex:
        case ParameterCell::DataContent:
        case ParameterCell::Crc:
        case ParameterCell::NodeType:
            table->setCellWidget(row, column,
                                 makeEditor(table, m_variant.columns.at(column).cell, text, &parts));
            break;
        case ParameterCell::SpatialIndex:
            table->setItem(row, column, makeSpatialIndex(text));
            break;
        default:
            // The button's column too: a row of a file brings an empty field for it.
            table->setItem(row, column, new QTableWidgetItem(text.isNull() ? QLatin1String("") : text));
        }
    }
    addButton(table, row);
    connectLoadedRow(parts);
    emit rowMade(table, row);
}

// An item that keeps its last good text, for validateLength to go back to.
QTableWidgetItem *ParameterEditor::makeSpatialIndex(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setData(Qt::UserRole, isCount(text) ? text : QStringLiteral("1"));
    return item;
}

void ParameterEditor::addButton(QTableWidget *table, int row)
{
    auto *button = new QPushButton(m_deleteIcon, QString(), table->viewport());
    button->setFixedSize(buttonSize, buttonSize);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus); // a click that took the focus would make its own row current
    button->setToolTip(m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Delete the current row")));
    button->setAccessibleName(button->toolTip());
    connect(button, &QPushButton::clicked, this, &ParameterEditor::removeParameter);
    table->setCellWidget(row, table->columnCount() - 1, button);
}

QWidget *ParameterEditor::makeEditor(QTableWidget *table, ParameterCell cell, const QString &value,
                                     RowParts *parts)
{
    if (!m_variant.entries(cell).isEmpty()) {
        return makeList(table, cell, value, parts);
    }
    // Cell widgets are born in the viewport: a later move there would change the style of each, which is
    // slow.
    auto *editor = new QLineEdit(value, table->viewport());
    editor->setFrame(false);
    switch (cell) {
    case ParameterCell::Address:
        parts->address = editor;
        break;
    case ParameterCell::Name:
        parts->name = editor;
        break;
    case ParameterCell::Length:
        parts->length = editor;
        editor->setEnabled(false);
        break;
    case ParameterCell::Amplitude:
        parts->amplitude = editor;
        editor->setEnabled(false);
        break;
    case ParameterCell::DataContent:
        break;
    default:
        parts->formulas[cell == ParameterCell::WriteFormula] = editor;
    }
    return editor;
}

QWidget *ParameterEditor::makeList(QTableWidget *table, ParameterCell cell, const QString &value,
                                   RowParts *parts)
{
    auto *list = new QComboBox(table->viewport());
    QStringList entries = m_variant.entries(cell);
    std::transform(entries.cbegin(), entries.cend(), entries.begin(),
                   [this](const QString &stored) { return m_variant.shown(stored); });
    list->addItems(entries);
    list->setCurrentText(m_variant.shown(value));
    list->setToolTip(list->currentText()); // may be longer than its column
    connect(list, &QComboBox::currentTextChanged, list, &QWidget::setToolTip);
    list->installEventFilter(m_form);
    if (cell == ParameterCell::Type) {
        parts->type = list;
    } else if (cell == ParameterCell::Method) {
        parts->method = list;
    }
    return list;
}

void ParameterEditor::connectAddedRow(int row, const RowParts &parts)
{
    if (parts.address) {
        connect(parts.address, &QLineEdit::textChanged, this, [this, row, editor = parts.address] {
            if (m_variant.addressOfLatestTable) {
                validateAddrOnChange(row, m_variant.indexOf(ParameterCell::Address));
            } else {
                checkAtEndOfEditing(editor, row, &ParameterEditor::checkAddress);
            }
        });
    }
    connect(parts.name, &QLineEdit::textChanged, this,
            [this, row, editor = parts.name] { watchName(editor, row); });
    connectTypeAndLength(parts);
    if (parts.amplitude) {
        connect(parts.amplitude, &QLineEdit::textChanged, this, [this, row, editor = parts.amplitude] {
            checkAtEndOfEditing(editor, row, &ParameterEditor::checkAmplitude);
        });
        connect(parts.method, &QComboBox::currentTextChanged, parts.amplitude,
                [&variant = m_variant, editor = parts.amplitude](const QString &shown) {
                    editor->setEnabled(shown == variant.amplitudeMethod());
                    if (!editor->isEnabled()) {
                        editor->clear();
                    }
                });
    }
    for (QLineEdit *formula : parts.formulas) {
        if (formula) {
            connect(formula, &QLineEdit::textChanged, this, [this, row, formula] {
                checkAtEndOfEditing(formula, row, &ParameterEditor::checkFormula);
            });
        }
    }
}

void ParameterEditor::connectLoadedRow(const RowParts &parts)
{
    connectTypeAndLength(parts);
    if (parts.length && parts.type) {
        parts.length->setEnabled(parts.type->currentText() == QLatin1String("string"));
    }
    if (!parts.amplitude) {
        return;
    }
    connect(parts.amplitude, &QLineEdit::editingFinished, this,
            [this, editor = parts.amplitude] { checkNumber(editor); });
    if (parts.method) {
        const auto enable = [&variant = m_variant, editor = parts.amplitude](const QString &shown) {
            editor->setEnabled(shown == variant.amplitudeMethod());
        };
        enable(parts.method->currentText());
        connect(parts.method, &QComboBox::currentTextChanged, parts.amplitude, enable);
    }
}

void ParameterEditor::connectTypeAndLength(const RowParts &parts)
{
    if (!parts.length) {
        return;
    }
    connect(parts.length, &QLineEdit::editingFinished, this,
            [this, editor = parts.length] { checkLength(editor); });
    if (parts.type) {
        connect(parts.type, &QComboBox::currentTextChanged, parts.length,
                [editor = parts.length](const QString &type) {
                    editor->setEnabled(type == QLatin1String("string"));
                    if (!editor->isEnabled()) {
                        editor->setText(QStringLiteral("1"));
                    }
                });
    }
}

void ParameterEditor::log(const char *operation) const
{
    logToFile(QLatin1String(m_variant.form) + QStringLiteral(": ") + QLatin1String(operation));
}

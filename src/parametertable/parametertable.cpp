#include "parametertable/parametertable.h"

#include "parameters/parameterrules.h"
#include "parametertable/cellwidget.h"
#include "parametertable/listcell.h"
#include "widgets/celltips.h"
#include "widgets/progress.h"
#include "widgets/scrollintosight.h"
#include "widgets/tableheader.h"

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QToolTip>

namespace {

constexpr int buttonSize = 35; // pixels

constexpr int longestText = 300; // pixels of a cell's text in a tool tip

// Of the cells that hold items in a loaded row and editors in an added one.
bool isItemWhenLoaded(ParameterCell cell)
{
    return cell == ParameterCell::Address || cell == ParameterCell::Name
        || cell == ParameterCell::CollectionFormula || cell == ParameterCell::WriteFormula;
}

bool hasLength(const QString &type)
{
    return type == QLatin1String("string");
}

} // namespace

ParameterTable::ParameterTable(const ParameterVariant &variant, QObject *listFilter, QWidget *parent)
    : WidgetTable(parent)
    , m_variant(variant)
    , m_listFilter(listFilter)
    , m_deleteIcon(QStringLiteral(":/adsdemo/images/Delete.svg"))
{
    setUpColumns();
    verticalHeader()->setDefaultSectionSize(buttonSize + 1); // the grid takes a pixel
    CellTips::install(this);
    TableHeader::makeGrey(this);
    setTabKeyNavigation(false); // Tab leads through the cell widgets and out of the table
    setInputMethodHints(Qt::ImhHiddenText);
    if (m_variant.height > 0) {
        setFixedHeight(m_variant.height);
    }
}

void ParameterTable::setUpColumns()
{
    setColumnCount(m_variant.columns.size());
    setHorizontalHeaderLabels(m_variant.headers());
    horizontalHeader()->setMinimumSectionSize(buttonSize); // else a style may widen the last column
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    for (int column = 0; column < m_variant.columns.size(); ++column) {
        setColumnWidth(column, m_variant.columns.at(column).width);
    }
    TableHeader::explain(this);
}

void ParameterTable::appendRow()
{
    const int row = rowCount();
    insertRow(row);
    for (int column = 0; column < m_variant.columns.size(); ++column) {
        const ParameterCell cell = m_variant.columns.at(column).cell;
        if (cell == ParameterCell::SpatialIndex) {
            setItem(row, column, makeSpatialIndex(QStringLiteral("1")));
        } else {
            const bool counts = cell == ParameterCell::Length;
            putWidget(row, column, makeWidget(cell, counts ? QStringLiteral("1") : QString()));
        }
    }
    doItemsLayout();
    connectEditors(row);
    connectLength(row, RowKind::Added);
    connectAmplitude(row, RowKind::Added);
    emit rowMade(row);
}

void ParameterTable::typeInto(int row)
{
    QLineEdit *first = editor(row, 0);
    if (!first) {
        return;
    }
    // The focus makes a row the current one, which is the one that a button then deletes. The view is not
    // told of the way back: it would take the focus along.
    const QPersistentModelIndex current = currentIndex();
    first->setFocus();
    {
        const QSignalBlocker quiet(selectionModel());
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    }
    viewport()->update();
    scrollTo(model()->index(row, 0));
    // Not before something is typed: the button that added the row would slip away under the pointer, and the
    // next click of who adds several would go into a cell.
    connect(first, &QLineEdit::textEdited, first, [first] { scrollIntoSight(first, 0); });
}

void ParameterTable::fill(const RowList &rows)
{
    {
        const QSignalBlocker quiet(this);
        setRowCount(0);
    }
    append(rows);
}

void ParameterTable::append(const RowList &rows)
{
    const int first = rowCount();
    {
        const QSignalBlocker quiet(this);
        Progress progress(this, m_variant.loadingText(), rows.size());
        // All rows at once: inserting them one by one would lay out those made so far each time.
        setRowCount(first + rows.size());
        for (int row = 0; row < rows.size(); ++row) {
            fillRow(first + row, rows.at(row));
            progress.advance(row + 1);
        }
        doItemsLayout();
    }
    for (int row = first; row < first + rows.size(); ++row) {
        emit rowMade(row);
    }
}

void ParameterTable::endEditing()
{
    const QPointer<QLineEdit> editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    if (!editor || !isAncestorOf(editor)) {
        return;
    }
    // Either way the cell's check may tell a message, below which the form may die: not in the middle of a
    // loss of focus, nor of a commit by the view.
    if (state() == EditingState) { // the editor is that of an item
        const QString typed = editor->text();
        closeEditor(editor, QAbstractItemDelegate::NoHint);
        model()->setData(currentIndex(), typed);
        return;
    }
    const QPointer<ParameterTable> table(this);
    emit editor->editingFinished();
    if (table && editor) {
        const QSignalBlocker quiet(editor);
        setFocus();
    }
}

void ParameterTable::fillRow(int row, const QVariantList &values)
{
    const int buttonColumn = columnCount() - 1;
    for (int column = 0; column < qMin(values.size(), columnCount()); ++column) {
        const ParameterCell cell = m_variant.columns.at(column).cell;
        const QString text = values.at(column).toString();
        if (cell == ParameterCell::SpatialIndex) {
            setItem(row, column, makeSpatialIndex(text));
        } else if (isItemWhenLoaded(cell) || column == buttonColumn) {
            // The button's column too: a row of a file brings an empty field for it.
            setItem(row, column, new QTableWidgetItem(text.isNull() ? QLatin1String("") : text));
        } else {
            putWidget(row, column, makeWidget(cell, text));
        }
    }
    putWidget(row, buttonColumn, makeButton());
    connectLength(row, RowKind::Loaded);
    connectAmplitude(row, RowKind::Loaded);
}

bool ParameterTable::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QPushButton *>(watched);
    if (event->type() == QEvent::ToolTip && button) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           Qt::convertFromPlainText(removalText(), Qt::WhiteSpaceNormal), button);
        return true;
    }
    return WidgetTable::eventFilter(watched, event);
}

RowList ParameterTable::rows() const
{
    RowList rows;
    rows.reserve(rowCount());
    const QVector<int> translated{m_variant.indexOf(ParameterCell::Method),
                                  m_variant.indexOf(ParameterCell::NodeType)};
    for (int row = 0; row < rowCount(); ++row) {
        QVariantList values;
        for (int column = 0; column < columnCount(); ++column) {
            const QString shown = text(row, column);
            if (!shown.isNull() || item(row, column)) {
                values.append(translated.contains(column) ? m_variant.stored(shown) : shown);
            }
        }
        rows.append(values);
    }
    return rows;
}

QList<QStringList> ParameterTable::texts() const
{
    QList<QStringList> rows;
    for (int row = 0; row < rowCount(); ++row) {
        rows.append(texts(row));
    }
    return rows;
}

QStringList ParameterTable::texts(int row) const
{
    QStringList texts;
    for (int column = 0; column < columnCount(); ++column) {
        texts.append(text(row, column));
    }
    return texts;
}

QString ParameterTable::text(int row, int column) const
{
    if (const QTableWidgetItem *cell = item(row, column)) {
        return cell->text();
    }
    if (const QLineEdit *edit = editor(row, column)) {
        return edit->text();
    }
    if (const QComboBox *choice = list(row, column)) {
        return choice->currentText();
    }
    return {};
}

QLineEdit *ParameterTable::editor(int row, int column) const
{
    return qobject_cast<QLineEdit *>(cellWidget(row, column));
}

QComboBox *ParameterTable::list(int row, int column) const
{
    return qobject_cast<QComboBox *>(cellWidget(row, column));
}

// An item that keeps its last good text, for the check of lengths to go back to.
QTableWidgetItem *ParameterTable::makeSpatialIndex(const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setData(Qt::UserRole, ParameterRules::isCount(text) ? text : QStringLiteral("1"));
    return item;
}

QWidget *ParameterTable::makeWidget(ParameterCell cell, const QString &value)
{
    if (cell == ParameterCell::Button) {
        return makeButton();
    }
    if (m_variant.entries(cell).isEmpty()) {
        return makeEditor(cell, value);
    }
    return makeList(cell, value);
}

// Compat: each button removes the current row, which need not be its own.
QString ParameterTable::removalText() const
{
    const int row = currentRow();
    const int address = m_variant.indexOf(ParameterCell::Address);
    if (row < 0) {
        return m_variant.translated(QT_TRANSLATE_NOOP(
            "ParameterTable", "Delete the current row: none is current, click the number of one first"));
    }
    const auto shown = [this, row](int column) {
        return fontMetrics().elidedText(text(row, column), Qt::ElideRight, longestText);
    };
    const QString name = shown(m_variant.indexOf(ParameterCell::Name));
    if (address < 0) {
        return m_variant
            .translated(QT_TRANSLATE_NOOP("ParameterTable", "Delete the current row: row %1, name \"%2\""))
            .arg(QString::number(row + 1), name);
    }
    return m_variant
        .translated(QT_TRANSLATE_NOOP("ParameterTable",
                                      "Delete the current row: row %1, name \"%2\", address \"%3\""))
        .arg(QString::number(row + 1), name, shown(address));
}

void ParameterTable::contextMenuEvent(QContextMenuEvent *event)
{
    emit menuRequested(event->globalPos());
}

QWidget *ParameterTable::makeButton()
{
    auto *button = new CellWidget<QPushButton>(m_deleteIcon, QString(), viewport());
    button->setFixedSize(buttonSize, buttonSize);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus); // a click that took the focus would make its own row current
    button->setToolTip(m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Delete the current row")));
    button->setAccessibleName(button->toolTip());
    connect(button, &QPushButton::clicked, this, &ParameterTable::removePressed);
    return button;
}

QLineEdit *ParameterTable::makeEditor(ParameterCell cell, const QString &value)
{
    auto *made = new CellWidget<QLineEdit>(value, viewport());
    made->setFrame(false);
    made->setEnabled(cell != ParameterCell::Length && cell != ParameterCell::Amplitude);
    return made;
}

QComboBox *ParameterTable::makeList(ParameterCell cell, const QString &value)
{
    auto *made = new ListCell(viewport());
    made->addItems(m_variant.shownEntries(cell));
    made->setCurrentText(m_variant.shown(value));
    made->setToolTip(made->currentText()); // may be longer than its column
    connect(made, &QComboBox::currentTextChanged, made, &QWidget::setToolTip);
    made->installEventFilter(m_listFilter);
    return made;
}

void ParameterTable::connectEditors(int row)
{
    for (int column = 0; column < columnCount(); ++column) {
        const ParameterCell cell = m_variant.columns.at(column).cell;
        QLineEdit *edit = editor(row, column);
        if (edit && (isItemWhenLoaded(cell) || cell == ParameterCell::Amplitude)) {
            connect(edit, &QLineEdit::textChanged, this,
                    [this, edit, row, cell] { emit edited(edit, row, cell); });
        }
    }
}

// A row of a file may be short, so that any of these cells may be missing.
void ParameterTable::connectLength(int row, RowKind kind)
{
    QLineEdit *length = editor(row, m_variant.indexOf(ParameterCell::Length));
    const QComboBox *type = list(row, m_variant.indexOf(ParameterCell::Type));
    if (!length) {
        return;
    }
    connect(length, &QLineEdit::editingFinished, this, [this, length] { emit lengthEntered(length); });
    if (!type) {
        return;
    }
    connect(type, &QComboBox::currentTextChanged, length, [length](const QString &shown) {
        length->setEnabled(hasLength(shown));
        if (!length->isEnabled()) {
            length->setText(QStringLiteral("1"));
        }
    });
    if (kind == RowKind::Loaded) {
        length->setEnabled(hasLength(type->currentText()));
    }
}

void ParameterTable::connectAmplitude(int row, RowKind kind)
{
    QLineEdit *amplitude = editor(row, m_variant.indexOf(ParameterCell::Amplitude));
    const QComboBox *method = list(row, m_variant.indexOf(ParameterCell::Method));
    if (!amplitude) {
        return;
    }
    if (kind == RowKind::Loaded) {
        connect(amplitude, &QLineEdit::editingFinished, this,
                [this, amplitude] { emit amplitudeEntered(amplitude); });
    }
    if (!method) {
        return;
    }
    const auto enable = [&variant = m_variant, amplitude](const QString &shown) {
        amplitude->setEnabled(shown == variant.amplitudeMethod());
    };
    connect(method, &QComboBox::currentTextChanged, amplitude, enable);
    if (kind == RowKind::Loaded) {
        enable(method->currentText());
    } else {
        connect(method, &QComboBox::currentTextChanged, amplitude, [amplitude] {
            if (!amplitude->isEnabled()) {
                amplitude->clear();
            }
        });
    }
}

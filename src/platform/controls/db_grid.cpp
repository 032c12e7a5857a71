#include "platform/controls/db_grid.h"

#include "platform/controls/caption_header.h"
#include "platform/controls/cell_delegate.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid_model.h"
#include "platform/controls/grid_interface.h"
#include "platform/controls/warning_sign.h"
#include "platform/runtime/guard.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace controls {

DBGrid::DBGrid(const QString& name, QWidget* parent)
    : QTableView(parent), header_(new CaptionHeader(this)), delegate_(new CellDelegate(this)),
      model_(new DBGridModel(this))
{
    setObjectName(name);
    setUpView();
    setModel(model_);
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& cell) {
        // If another station has deleted the clicked row, the first click of a double-click returns
        // the grid to the row that was current before the click. The clicked row is then not the
        // current row, and DblClick is not emitted.
        if (cell.row() == currentIndex().row())
            emit DblClick();
    });
    const auto measureAgain = [this] { measuredRows_ = {-1, -1}; };
    connect(model_, &QAbstractItemModel::dataChanged, this, measureAgain);
    connect(model_, &QAbstractItemModel::rowsInserted, this, measureAgain);
    connect(model_, &QAbstractItemModel::rowsRemoved, this, measureAgain);
    connect(model_, &QAbstractItemModel::modelReset, this, measureAgain);
    connect(
        model_, &DBGridModel::readFailed, this,
        [this] { runtime::guarded([this] { model_->raiseReadFailure(); }); }, Qt::QueuedConnection);
}

DBGrid::~DBGrid() = default;

void DBGrid::setUpView()
{
    setLayoutDirection(Qt::LeftToRight);
    setFont(QFont(QStringLiteral("Arial")));
    setHorizontalHeader(header_);
    setItemDelegate(delegate_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->hide();
    fitRows();
}

void DBGrid::setColumns(const QList<DBGridColumn>& columns)
{
    model_->setColumns(columns);
    figureWidths_.fill(0, columns.size());
    for (int i = 0; i < columns.size(); ++i)
        setColumnHidden(i, columns[i].width == 0);
    shareWidth();
    showCurrent();
}

void DBGrid::setDataSource(DataControl* source)
{
    source_ = source;
    using runtime::on;
    on(source, &DataControl::Validate, this, [this] { writeBeforeMove(); });
    on(source, &DataControl::rowsReset, this, [this] { readRows(); });
    on(source, &DataControl::currentChanged, this, [this] { showCurrent(); });
    on(source, &DataControl::rowAdded, this, [this](const auto& key) { model_->addRow(key); });
    on(source, &DataControl::rowUpdated, this, [this](const auto& key) { model_->updateRow(key); });
    on(source, &DataControl::rowDeleted, this, [this](const auto& key) { takeAway(key); });
    readRows();
}

void DBGrid::setRowRemark(const RowRemark& remark, int column)
{
    model_->setRowRemark(remark, column, warningSign());
}

QString DBGrid::caption() const
{
    return header_->caption();
}

void DBGrid::setCaption(const QString& caption)
{
    header_->setCaption(caption);
    setAccessibleName(caption);
    setWindowTitle(caption);
}

dao::Recordset* DBGrid::rows() const
{
    return source_ && source_->hasRecordset() ? &source_->Recordset() : nullptr;
}

void DBGrid::readRows()
{
    const QScopedValueRollback following(following_, true);
    model_->bind(rows());
    showCurrent();
}

/// Makes the recordset's current row the current row of the view.
void DBGrid::showCurrent()
{
    if (moving_)
        return;
    const QScopedValueRollback following(following_, true);
    const int row = rows() != nullptr ? model_->rowOf(rows()->currentKey()) : -1;
    if (row < 0) {
        selectionModel()->clear();
        return;
    }
    if (row != currentIndex().row())
        goTo(row);
    bringIntoSight();
}

/// Scrolls the view to the current row. Does nothing before the grid is shown, because the size of
/// the grid is not known yet.
void DBGrid::bringIntoSight()
{
    if (isVisible())
        scrollTo(currentIndex());
}

/// Returns the column of the current cell. If there is no current cell, returns the first visible
/// column of an editable grid, because the user types there. For a read-only grid, returns the
/// rightmost visible column, because reading starts there.
int DBGrid::shownColumn() const
{
    if (currentIndex().isValid() && !isColumnHidden(currentIndex().column()))
        return currentIndex().column();
    const int count = model_->columnCount();
    for (int i = 0; i < count; ++i) {
        const int column = editable_ ? i : count - 1 - i;
        if (!isColumnHidden(column))
            return column;
    }
    return 0;
}

void DBGrid::goTo(int row)
{
    setCurrentIndex(model_->index(row, shownColumn()));
}

/// Moves the recordset to the row that the user has chosen in the view.
void DBGrid::moveRecordset(int row)
{
    const dao::RowKey key = model_->keyAt(row);
    if (rows() == nullptr || !key.isValid() || rows()->currentKey() == key)
        return;
    bool moved = false;
    {
        const QScopedValueRollback moving(moving_, true);
        moved = rows()->moveToKey(key);
    }
    if (!moved || (rows()->hasCurrent() && rows()->currentKey() != key))
        showCurrent();
}

void DBGrid::takeAway(const QVariant& key)
{
    const QScopedValueRollback following(following_, true);
    model_->removeRow(key);
    showCurrent();
}

void DBGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    // QTableView::currentChanged is skipped, because it only adds a screen-reader event with a
    // wrong cell number. QTableView counts the hidden columns in this number.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::currentChanged(current, previous);
    if (hasFocus())
        announceCell(*this, current, QAccessible::Focus);
    if (following_ || !current.isValid())
        return;
    runtime::guarded([this, row = current.row()] {
        if (!leaveEditedRow(row))
            return;
        if (editable_)
            moveUnlessHeld(row);
        else
            moveRecordset(row);
    });
}

void DBGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    // See currentChanged. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::selectionChanged(selected, deselected);
    const auto announce = [this](const QItemSelection& rows, QAccessible::Event type) {
        if (!rows.isEmpty())
            announceCell(*this, model_->index(rows.constFirst().top(), shownColumn()), type);
    };
    announce(selected, QAccessible::SelectionAdd);
    announce(deselected, QAccessible::SelectionRemove);
}

/// Queues the announcement of the current cell, so that screen readers announce the name of the
/// grid before the cell.
void DBGrid::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (hasFocus())
                announceCell(*this, currentIndex(), QAccessible::Focus);
        },
        Qt::QueuedConnection);
}

QItemSelectionModel::SelectionFlags DBGrid::selectionCommand(const QModelIndex& index,
                                                             const QEvent* /*event*/) const
{
    // The current row is always the selected row, even if the user holds Ctrl during the click.
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

void DBGrid::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isDelete = event->key() == Qt::Key_Delete;
    // A held Delete key, and a held Enter key in a read-only grid, act only once.
    const bool isHeld = (isDelete || (isEnter && !editable_)) && event->isAutoRepeat();
    if (isHeld || (editable_ && handleEditKey(*event))) {
        event->accept();
    } else if (!editable_ && isEnter) {
        event->accept();
        emit enterPressed();
    } else if (!editable_ && isDelete) {
        event->accept();
        emit deletePressed();
    } else {
        QTableView::keyPressEvent(event);
    }
}

/// A right click on the header or below the last row refers to no row. Therefore such a click opens
/// no menu.
void DBGrid::contextMenuEvent(QContextMenuEvent* event)
{
    const bool isMouse = event->reason() == QContextMenuEvent::Mouse;
    const QPoint place = isMouse ? viewport()->mapFromGlobal(event->globalPos())
                                 : visualRect(currentIndex()).center();
    const QModelIndex cell = viewport()->rect().contains(place) ? indexAt(place) : QModelIndex();
    if (cell.isValid() && cell.row() == currentIndex().row())
        emit menuRequested(viewport()->mapToGlobal(place));
}

void DBGrid::fitRows()
{
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
}

void DBGrid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    measuredRows_ = {-1, -1};
    fitRows();
}

void DBGrid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    shareWidth();
    bringIntoSight();
}

void DBGrid::showEvent(QShowEvent* event)
{
    QTableView::showEvent(event);
    shareWidth();
    // The forms are read from the right.
    horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
    bringIntoSight();
}

void DBGrid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    markShownRows();
    measureShownFigures();
}

/// Makes RecordCount of the recordset include all rows up to the last visible row. Does not throw.
void DBGrid::markShownRows()
{
    if (rows() == nullptr)
        return;
    const int last = rowAt(viewport()->height() - 1);
    rows()->markReached(last < 0 ? model_->recordCount() : last + 1);
}

void SetGridFont(DBGrid& grid)
{
    QFont font = grid.font();
    font.setPointSizeF(11);
    grid.setFont(font);
    QPalette palette = grid.palette();
    palette.setColor(QPalette::Text, Qt::black);
    grid.setPalette(palette);
}

} // namespace controls

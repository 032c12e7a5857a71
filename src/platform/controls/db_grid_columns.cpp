// This file contains the functions that distribute the width of a grid over its columns.

#include "platform/controls/caption_header.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/db_grid_model.h"

#include <QFontMetricsF>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace controls {

namespace {

constexpr int gridLine = 1;

/// Returns true for a measure, a count, a date or a telephone number. Such a text must never be
/// shortened, because a shortened figure looks like a different figure.
bool isFigure(const QString& text)
{
    const auto isDigit = [](QChar each) { return each.isDigit(); };
    const auto isLetter = [](QChar each) { return each.isLetter(); };
    return std::any_of(text.begin(), text.end(), isDigit) &&
           std::none_of(text.begin(), text.end(), isLetter);
}

/// Returns the width of a figure (a number or a date) as the sum of its characters' widths. The sum
/// is correct because figures have no joined characters. Computing the sum is several times as fast
/// as shaping the text, which matters because all visible cells are measured while the grid is
/// painted.
int figureWidth(const QString& figure, const QFontMetricsF& metrics)
{
    const double width =
        std::accumulate(figure.begin(), figure.end(), 0.0, [&](double sum, QChar each) {
            return sum + metrics.horizontalAdvance(each);
        });
    return static_cast<int>(std::ceil(width));
}

/// Divides the width `room` among columns in proportion to their weights. A column whose share is
/// less than its minimum width gets its minimum width, and the other columns share the remaining
/// width.
QList<int> sharedWidths(int room, const QList<int>& weights, const QList<int>& least)
{
    QList<int> widths(weights.size(), 0);
    QList<bool> isFixed(weights.size(), false);
    bool changes = true;
    while (changes) {
        changes = false;
        qint64 left = 0;
        qint64 rest = room;
        for (qsizetype i = 0; i < weights.size(); ++i) {
            if (isFixed[i])
                rest -= least[i];
            else
                left += weights[i];
        }
        for (qsizetype i = 0; i < weights.size(); ++i) {
            if (isFixed[i] || weights[i] == 0)
                continue;
            widths[i] = static_cast<int>(std::max<qint64>(rest, 0) * weights[i] / left);
            rest -= widths[i];
            left -= weights[i];
            if (widths[i] < least[i]) {
                widths[i] = least[i];
                isFixed[i] = changes = true;
                break;
            }
        }
    }
    return widths;
}

} // namespace

/// Distributes the grid's width over the columns. This may show or hide a scroll bar, which changes
/// the available width. The changed width is then distributed again, because Qt sends no resize
/// event for this change while the grid is being shown.
void DBGrid::shareWidth()
{
    const int former = viewport()->width();
    shareWidth(former);
    if (viewport()->width() != former)
        shareWidth(viewport()->width());
}

void DBGrid::shareWidth(int room)
{
    const QList<DBGridColumn>& columns = model_->columns();
    QList<int> weights;
    QList<int> least;
    for (int i = 0; i < columns.size(); ++i) {
        weights.append(columns[i].width);
        least.append(columns[i].width == 0
                         ? 0
                         : std::max(header_->sectionSizeHint(i), figureWidths_.value(i)));
    }
    const QList<int> widths = sharedWidths(room, weights, least);
    for (int i = 0; i < columns.size(); ++i) {
        if (columns[i].width != 0)
            setColumnWidth(i, widths[i]);
    }
}

/// Returns the width that a cell needs to show a figure (a number or a date) completely, or 0 if
/// the cell contains any other text.
int DBGrid::neededWidth(const QModelIndex& cell, const QFontMetricsF& metrics) const
{
    const QString text = cell.data().toString();
    if (!isFigure(text))
        return 0;
    if (cell.data(Qt::DecorationRole).isValid())
        return sizeHintForIndex(cell).width() + gridLine;
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    return figureWidth(text, metrics) + 2 * margin + gridLine;
}

/// Widens the columns if a visible figure (a number or a date) does not fit into its column.
/// Columns never become narrower while the user scrolls. The function measures only if the visible
/// rows have changed since the last call. Does not throw.
void DBGrid::measureShownFigures()
{
    const int first = std::max(rowAt(0), 0);
    const int last = rowAt(viewport()->height() - 1);
    const int end = last < 0 ? model_->rowCount() : last + 1;
    if (std::exchange(measuredRows_, std::pair(first, end)) == std::pair(first, end))
        return;
    const QFontMetricsF metrics(font());
    bool isWider = false;
    for (int row = first; row < end; ++row) {
        for (int column = 0; column < figureWidths_.size(); ++column) {
            if (isColumnHidden(column))
                continue;
            const int width = neededWidth(model_->index(row, column), metrics);
            if (width > figureWidths_[column]) {
                figureWidths_[column] = width;
                isWider = isWider || width > columnWidth(column);
            }
        }
    }
    if (isWider)
        // The width is distributed over the columns after painting, because columns must not change
        // while the grid is painted.
        QMetaObject::invokeMethod(
            this, [this] { shareWidth(); }, Qt::QueuedConnection);
}

} // namespace controls

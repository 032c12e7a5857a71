// How a grid distributes its width over its columns.

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
/// shortened, because its beginning looks like another figure.
bool isFigure(const QString& text)
{
    const auto isDigit = [](QChar each) { return each.isDigit(); };
    const auto isLetter = [](QChar each) { return each.isLetter(); };
    return std::any_of(text.begin(), text.end(), isDigit) &&
           std::none_of(text.begin(), text.end(), isLetter);
}

/// Returns the width of a figure. Adding up the characters is several times as fast as shaping the
/// text, which is done for all visible cells at each paint, and figures have no joined characters.
int figureWidth(const QString& figure, const QFontMetricsF& metrics)
{
    const double width =
        std::accumulate(figure.begin(), figure.end(), 0.0, [&](double sum, QChar each) {
            return sum + metrics.horizontalAdvance(each);
        });
    return static_cast<int>(std::ceil(width));
}

/// Returns the widths of columns with these weights in a room. A column whose share is less than
/// its least width gets the least width, and the others share what remains.
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

/// Distributes the width over the columns, a second time if the first pass shows or hides the
/// scroll bar. Qt sends no resize event for that change while the grid is being shown.
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

/// Returns the width that a cell needs to show its figure, or 0 for a cell with another text.
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

/// Widens the columns if a figure in view does not fit. Columns never become narrower while the
/// user scrolls. Measures only if other rows are in view or a row has changed since the last call.
/// Does not throw.
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
        // Columns must not change while the grid is painted.
        QMetaObject::invokeMethod(
            this, [this] { shareWidth(); }, Qt::QueuedConnection);
}

} // namespace controls

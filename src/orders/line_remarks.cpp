#include "orders/line_remarks.h"

#include "calculation/line_marks.h"
#include "calculation/line_words.h"
#include "platform/dao/recordset.h"
#include "store/line_columns.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace orders {

namespace {

/// To find typing mistakes, a line is compared with up to this number of lines above it, and up to
/// the same number of lines below it.
constexpr int neighbourhood = 50;

std::optional<double> numberAt(const dao::RecordsetPages& lines, int row, int ordinal)
{
    bool isNumber = false;
    const double number = lines.value(row, ordinal).toDouble(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<cuts::Size> sizeAt(const dao::RecordsetPages& lines, int row, int widthOrdinal)
{
    const auto width = numberAt(lines, row, widthOrdinal);
    const auto height = numberAt(lines, row, widthOrdinal + 1);
    return width && height ? std::optional(cuts::Size{*width, *height}) : std::nullopt;
}

std::vector<cuts::Size> neighboursOf(const dao::RecordsetPages& lines, int row)
{
    std::vector<cuts::Size> bays;
    const int end = std::min(lines.rowCount(), row + neighbourhood + 1);
    for (int each = std::max(0, row - neighbourhood); each < end; ++each) {
        if (each == row)
            continue;
        const auto opening = sizeAt(lines, each, store::line::openingWidth);
        const auto sashes = numberAt(lines, each, store::line::count(cuts::Glass));
        if (opening && sashes)
            bays.push_back(cuts::bayOf(*opening, *sashes));
    }
    return bays;
}

/// Returns the figures of the line in this row. Returns nothing if a figure is missing, which does
/// not occur in lines that the program has stored.
std::optional<cuts::LineFigures> figuresOf(const dao::RecordsetPages& lines, int row)
{
    const auto opening = sizeAt(lines, row, store::line::openingWidth);
    const auto sashes = numberAt(lines, row, store::line::count(cuts::Glass));
    if (!opening || !sashes)
        return {};
    cuts::LineFigures line;
    line.opening = *opening;
    line.sashes = *sashes;
    for (int part = 0; part < store::line::partCount; ++part) {
        const auto size = sizeAt(lines, row, store::line::cutWidth(part));
        if (!size)
            return {};
        line.parts[std::size_t(part)] = *size;
    }
    line.isMonoblock =
        calculation::isMonoblockKind(lines.value(row, store::line::windowKind).toString());
    line.reduced = sizeAt(lines, row, store::line::firstOfShutter).value_or(cuts::Size());
    using namespace store::line;
    const std::array shutter{firstOfShutter + 3, firstOfShutter + 4, firstOfShutter + 6,
                             lastOfShutter,      boxWidth,           boxHeight};
    std::transform(shutter.begin(), shutter.end(), line.shutter.begin(),
                   [&](int ordinal) { return numberAt(lines, row, ordinal).value_or(0); });
    return line;
}

QString remarkOnLine(const dao::RecordsetPages& lines, int row)
{
    const auto figures = figuresOf(lines, row);
    return figures ? cuts::marksOf(*figures, neighboursOf(lines, row)).join(u'\n') : QString();
}

} // namespace

controls::RowRemark lineRemark()
{
    return {remarkOnLine, neighbourhood};
}

} // namespace orders

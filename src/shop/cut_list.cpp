#include "shop/cut_list.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace shop {

namespace {

constexpr double easilyConfused = 0.3;
constexpr double areaUnit = 10000;

void addLine(int order, int line, QStringList& lines)
{
    const QString name = u"%1-%2"_s.arg(order).arg(line);
    if (lines.isEmpty() || lines.back() != name)
        lines.append(name);
}

/// Replaces the size of each element, such as the length of each piece in a list. The new size is
/// the greatest of the sizes that differ from the old one only by floating-point noise. The
/// elements can then be sorted and compared by exact values.
template <typename Element>
void unify(std::vector<Element>& elements, double Element::*size)
{
    std::vector<double*> sizes;
    sizes.reserve(elements.size());
    for (Element& each : elements)
        sizes.push_back(&(each.*size));
    std::sort(sizes.begin(), sizes.end(), [](const double* a, const double* b) { return *a > *b; });
    for (std::size_t i = 1, first = 0; i < sizes.size(); ++i) {
        if (*sizes[first] - *sizes[i] < lengthNoise)
            *sizes[i] = *sizes[first];
        else
            first = i;
    }
}

/// Returns the pieces of the plan by descending length. Pieces of the same length are sorted by
/// order and line.
std::vector<Piece> piecesOf(const GroupPlan& plan)
{
    std::vector<Piece> pieces;
    for (const GroupBars& bars : plan.bars)
        pieces.insert(pieces.end(), bars.pieces.begin(), bars.pieces.end());
    unify(pieces, &Piece::length);
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
        return std::tuple(-a.length, a.order, a.line) < std::tuple(-b.length, b.order, b.line);
    });
    return pieces;
}

void addGroup(const GroupPlan& plan, std::vector<CutListRow>& rows)
{
    const std::size_t first = rows.size();
    for (const Piece& each : piecesOf(plan)) {
        if (rows.size() == first || rows.back().length != each.length) {
            CutListRow row;
            row.group = plan.group;
            row.length = each.length;
            rows.push_back(row);
        }
        ++rows.back().count;
        addLine(each.order, each.line, rows.back().lines);
    }
    for (std::size_t i = first; i < rows.size(); ++i) {
        rows[i].total = withoutNoise(rows[i].length * rows[i].count);
        if (i + 1 < rows.size() &&
            rows[i].length - rows[i + 1].length < easilyConfused - lengthNoise)
            rows[i].isClose = rows[i + 1].isClose = true;
    }
}

} // namespace

std::vector<CutListRow> cutList(const std::vector<GroupPlan>& groups)
{
    std::vector<CutListRow> rows;
    for (const GroupPlan& each : groups)
        addGroup(each, rows);
    return rows;
}

std::vector<PaneRow> paneList(const std::vector<Pane>& panes)
{
    std::vector<Pane> sorted = panes;
    unify(sorted, &Pane::width);
    unify(sorted, &Pane::height);
    std::stable_sort(sorted.begin(), sorted.end(), [](const Pane& a, const Pane& b) {
        return std::tie(a.kind, a.colour, b.width, b.height) <
               std::tie(b.kind, b.colour, a.width, a.height);
    });
    std::vector<PaneRow> rows;
    for (const Pane& each : sorted) {
        const bool isSame = !rows.empty() && rows.back().kind == each.kind &&
                            rows.back().colour == each.colour && rows.back().width == each.width &&
                            rows.back().height == each.height;
        if (!isSame)
            rows.push_back({each.width, each.height, 0, each.kind, each.colour, 0, {}});
        rows.back().count += each.count;
        addLine(each.order, each.line, rows.back().lines);
    }
    for (PaneRow& each : rows)
        each.area =
            withoutNoise(each.width * each.height * static_cast<double>(each.count) / areaUnit);
    return rows;
}

} // namespace shop

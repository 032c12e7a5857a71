#include "shop/tables.h"

#include "platform/runtime/direction_marks.h"
#include "shop/cut_list.h"

using namespace Qt::StringLiterals;

namespace shop {

namespace {

using Row = std::vector<Cell>;

Row cellsOf(const GroupKey& group)
{
    return {partName(group.part), group.profile, group.colour};
}

Row joined(Row row, const Row& others)
{
    row.insert(row.end(), others.begin(), others.end());
    return row;
}

/// Returns the text for a data file: without direction marks, which a data file does not need, and
/// with blanks instead of line breaks.
QString plainText(QString text)
{
    const auto isMark = [](QChar each) {
        return each == runtime::leftToRightIsolate || each == runtime::popIsolate;
    };
    return text.removeIf(isMark).replace(u'\n', u' ');
}

/// Adds one table row for each piece on a set of equal bars. `bar` is the position of the set
/// within the group, counted from 1.
void addBars(const GroupPlan& plan, int bar, const GroupBars& bars, Table& table)
{
    const std::size_t perBar = bars.piecesPerBar();
    for (std::size_t i = 0; i < bars.pieces.size(); ++i) {
        const Piece& piece = bars.pieces[i];
        const int position = static_cast<int>(i % perBar) + 1;
        table.rows.push_back(
            joined(cellsOf(plan.group), {bar, bars.count, position, piece.order, piece.line,
                                         sideName(piece.side), piece.length, bars.rest}));
    }
}

} // namespace

Table piecesTable(const std::vector<Piece>& pieces, const SettingsByGroup& settings)
{
    Table table{{u"order"_s, u"line"_s, u"part"_s, u"side"_s, u"profile"_s, u"colour"_s,
                 u"length"_s, u"angle"_s},
                {}};
    for (const Piece& each : pieces)
        table.rows.push_back({each.order, each.line, partName(each.group.part), sideName(each.side),
                              each.group.profile, each.group.colour, each.length,
                              settingsOf(settings, each.group).angle});
    return table;
}

Table cutListTable(const ShopPack& pack)
{
    Table table{{u"part"_s, u"profile"_s, u"colour"_s, u"length"_s, u"count"_s, u"total"_s,
                 u"lines"_s, u"close"_s},
                {}};
    for (const CutListRow& each : cutList(pack.groups))
        table.rows.push_back(
            joined(cellsOf(each.group), {each.length, each.count, each.total, each.lines.join(u' '),
                                         each.isClose ? 1 : 0}));
    return table;
}

Table barPlanTable(const ShopPack& pack)
{
    Table table{{u"part"_s, u"profile"_s, u"colour"_s, u"bar"_s, u"count"_s, u"position"_s,
                 u"order"_s, u"line"_s, u"side"_s, u"length"_s, u"rest"_s},
                {}};
    for (const GroupPlan& plan : pack.groups) {
        int bar = 0;
        for (const GroupBars& each : plan.bars)
            addBars(plan, ++bar, each, table);
    }
    return table;
}

Table panesTable(const std::vector<Pane>& panes)
{
    Table table{
        {u"width"_s, u"height"_s, u"count"_s, u"kind"_s, u"colour"_s, u"area"_s, u"lines"_s}, {}};
    for (const PaneRow& each : paneList(panes))
        table.rows.push_back({each.width, each.height, static_cast<double>(each.count), each.kind,
                              each.colour, each.area, each.lines.join(u' ')});
    return table;
}

Table explanationsTable(const std::vector<ExplainedLine>& lines)
{
    Table table{{u"order"_s, u"line"_s, u"series"_s, u"width"_s, u"height"_s, u"part"_s, u"side"_s,
                 u"length"_s, u"explanation"_s},
                {}};
    for (const ExplainedLine& line : lines) {
        for (const ExplainedSize& each : line.sizes)
            table.rows.push_back({line.order, line.line, line.series, line.width, line.height,
                                  partName(each.part), sideName(each.side), each.length,
                                  plainText(each.explanation)});
    }
    return table;
}

} // namespace shop

#include "shop/paper/lists.h"
#include "shop/cut_list.h"
#include "shop/paper/table_layout.h"
#include "shop/paper/words.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

constexpr int groupGap = 200;

const std::vector<Column>& cutColumns()
{
    static const std::vector<Column> columns{
        {u"אורך"_s, 1500},
        {u"כמות"_s, 900},
        {u"סה\"כ אורך"_s, 1700},
        {u"סימון"_s, 1800},
        {u"שורות (הזמנה-שורה)"_s, Flow::width - 5900, report::Align::Right}};
    return columns;
}

const std::vector<Column>& paneColumns()
{
    static const std::vector<Column> columns{
        {u"רוחב"_s, 1200},
        {u"גובה"_s, 1200},
        {u"כמות"_s, 800},
        {u"סוג"_s, 1900, report::Align::Right},
        {u"צבע"_s, 1500, report::Align::Right},
        {u"שטח"_s, 1500},
        {u"שורות (הזמנה-שורה)"_s, Flow::width - 8100, report::Align::Right}};
    return columns;
}

void addGroup(const GroupPlan& plan, const std::vector<CutListRow>& rows, Flow& flow)
{
    flow.require(7 * lineHeight(factPoints));
    flow.paragraph(groupWords(plan.group), groupPoints, true);
    flow.line(u"מוטות: %1 באורך %2   זווית: %3"_s.arg(plan.barCount())
                  .arg(numberText(plan.settings.barLength), numberText(plan.settings.angle)),
              factPoints);
    TableLayout table(flow, cutColumns());
    int count = 0;
    double total = 0;
    for (const CutListRow& each : rows) {
        if (!(each.group == plan.group))
            continue;
        const QString mark = each.isClose ? u"שים לב: דומה"_s : QString();
        table.row({computedNumber(each.length), QString::number(each.count),
                   computedNumber(each.total), mark},
                  each.lines);
        count += each.count;
        total += each.total;
    }
    table.row({u"סה\"כ"_s, QString::number(count), computedNumber(total), QString()}, {}, true);
    flow.skip(groupGap);
}

std::vector<Sheet> paneSheets(const QString& title, const std::vector<Pane>& panes,
                              const ShopPack& pack)
{
    Flow flow(title, pack.orders);
    addFaults(pack.pieces.faults, flow);
    if (panes.empty()) {
        flow.line(u"אין פריטים ברשימה"_s, factPoints);
        return flow.take();
    }
    TableLayout table(flow, paneColumns());
    qint64 count = 0;
    double area = 0;
    for (const PaneRow& each : paneList(panes)) {
        table.row({computedNumber(each.width), computedNumber(each.height),
                   QString::number(each.count), kindWord(each.kind), each.colour,
                   computedNumber(each.area)},
                  each.lines);
        count += each.count;
        area += each.area;
    }
    const QString empty;
    table.row({u"סה\"כ"_s, empty, QString::number(count), empty, empty, computedNumber(area)}, {},
              true);
    return flow.take();
}

} // namespace

std::vector<Sheet> cutListSheets(const ShopPack& pack)
{
    Flow flow(u"רשימת חיתוך"_s, pack.orders);
    addFaults(pack.pieces.faults, flow);
    const std::vector<CutListRow> rows = cutList(pack.groups);
    if (std::ranges::any_of(rows, &CutListRow::isClose))
        flow.line(u"המסומנים \"דומה\" שונים בפחות מ-0.3 מאורך סמוך."_s, factPoints);
    for (const GroupPlan& each : pack.groups)
        addGroup(each, rows, flow);
    return flow.take();
}

std::vector<Sheet> glassSheets(const ShopPack& pack)
{
    return paneSheets(u"רשימת זכוכית"_s, pack.pieces.glass, pack);
}

std::vector<Sheet> meshSheets(const ShopPack& pack)
{
    return paneSheets(u"רשימת רשתות"_s, pack.pieces.mesh, pack);
}

} // namespace shop::paper

#include "shop/paper/explanations.h"

#include "shop/paper/table_layout.h"
#include "shop/paper/words.h"

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

constexpr int lineGap = 200;

const std::vector<Column>& explanationColumns()
{
    static const std::vector<Column> columns{
        {u"חלק"_s, 1300, report::Align::Right},
        {u"צד"_s, 1000, report::Align::Right},
        {u"מידה"_s, 1500},
        {u"חישוב"_s, Flow::width - 3800, report::Align::Right}};
    return columns;
}

void addLine(const ExplainedLine& line, Flow& flow)
{
    flow.require(5 * lineHeight(factPoints));
    flow.paragraph(u"הזמנה %1, שורה %2: %3, פתח ברוחב %4 ובגובה %5"_s.arg(line.order)
                       .arg(line.line)
                       .arg(line.series, computedNumber(line.width), computedNumber(line.height)),
                   groupPoints, true);
    if (line.sizes.empty()) {
        flow.line(u"אין הסבר למידות השורה"_s, factPoints);
    } else {
        TableLayout table(flow, explanationColumns());
        for (const ExplainedSize& each : line.sizes)
            table.textRow({partWord(each.part), sideWord(each.side), computedNumber(each.length)},
                          each.explanation);
    }
    flow.skip(lineGap);
}

} // namespace

std::vector<Sheet> explanationSheets(const ShopPack& pack)
{
    Flow flow(u"איך חושב"_s, pack.orders);
    addFaults(pack.pieces.faults, flow);
    for (const ExplainedLine& each : pack.explanations)
        addLine(each, flow);
    return flow.take();
}

} // namespace shop::paper

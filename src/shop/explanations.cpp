#include "shop/explanations.h"

#include "calculation/stored_lines.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "shop/pieces.h"
#include "store/line_columns.h"

using namespace Qt::StringLiterals;

namespace shop {

namespace {

using calculation::NamedSeries;

constexpr Part shopPart(cuts::Part part)
{
    switch (part) {
    case cuts::Mashkof:
        return Part::Frame;
    case cuts::Kanaf:
        return Part::Sash;
    case cuts::Glass:
        return Part::Glass;
    default:
        return Part::Mesh;
    }
}

double numberIn(dao::Recordset& line, const QString& field)
{
    const QVariant value = line.Fields(field).Value();
    return runtime::isNull(value) ? 0 : runtime::toDouble(value);
}

QString orNone(const QString& explanation)
{
    return explanation.isEmpty() ? u"אין הסבר"_s : explanation;
}

void addSize(Part part, Side side, double length, const QString& explanation, ExplainedLine& to)
{
    if (length != 0)
        to.sizes.push_back({part, side, length, orNone(explanation)});
}

QString withCount(const QString& explanation, const QString& count)
{
    return count.isEmpty() ? explanation : explanation + u"\nכמות: "_s + count;
}

void addParts(dao::Recordset& row, const cuts::ComputedLine& line, const cuts::TodaysSeries* series,
              ExplainedLine& to)
{
    for (const cuts::Part part : cuts::allParts) {
        if (isNotMade(runtime::textOrEmpty(row.Fields(store::line::kind(part)).Value())))
            continue;
        const cuts::Size& size = line.parts[part];
        const QString width = orNone(cuts::explainedSize(line, part, cuts::Side::Width, series));
        // If the series is missing, the explanation of the width says so, and the number of pieces
        // is not explained.
        const QString count =
            series == nullptr ? QString() : cuts::explainedCount(line, part, series);
        addSize(shopPart(part), Side::Width, size.width, withCount(width, count), to);
        addSize(shopPart(part), Side::Height, size.height,
                cuts::explainedSize(line, part, cuts::Side::Height, series), to);
    }
}

/// Returns the explanation of the width and number of the slats. The slats are narrower than the
/// opening by a deduction that the order line does not store. The explanation therefore tries the
/// two usual deductions. If neither gives the stored width, the width has no explanation.
QString explainedSlat(dao::Recordset& row, const cuts::Size& opening, double slat)
{
    QString width;
    for (const double deduct : cuts::shalavWidthDeducts) {
        if (width.isEmpty())
            width = cuts::explainedDifference(opening.width, deduct, slat);
    }
    const QString count = cuts::explainedSlats(opening, numberIn(row, u"Shalav_Thick"_s),
                                               static_cast<int>(numberIn(row, u"Shalav_Count"_s)));
    return withCount(orNone(width), count);
}

/// Adds the sizes of the roller shutter and how they are computed. In a line without a roller
/// shutter these sizes are 0, and addSize leaves out sizes that are 0.
void addShutter(dao::Recordset& row, const cuts::Size& opening, ExplainedLine& to)
{
    const double uCut = numberIn(row, u"U_Cut"_s);
    const double uVasa = numberIn(row, u"U_Vasa"_s);
    const double slat = numberIn(row, u"Shalav_Width"_s);
    const double box = numberIn(row, u"Argaz_Width"_s);
    const double boxHeight = numberIn(row, u"Argaz_Height"_s);
    addSize(Part::Guide, Side::Height, uCut,
            cuts::explainedDifference(opening.height, cuts::uCutAllowance, uCut), to);
    addSize(Part::Guide, Side::Height, uVasa,
            cuts::explainedDifference(opening.height, cuts::uVasaAllowance, uVasa), to);
    addSize(Part::Slat, Side::Width, slat, explainedSlat(row, opening, slat), to);
    addSize(Part::Box, Side::Width, box, box == opening.width ? u"כרוחב הפתח"_s : QString(), to);
    addSize(Part::Box, Side::Height, boxHeight, u"כהורדת הגובה של המונובלוק"_s, to);
}

} // namespace

ExplainedLine explain(dao::Recordset& row, const std::vector<NamedSeries>& catalogue)
{
    const cuts::ComputedLine line = calculation::readLine(row);
    ExplainedLine explained{
        .order = row.Fields(u"Order_Num"_s).Value().toInt(),
        .line = row.Fields(u"NUM"_s).Value().toInt(),
        .series = runtime::textOrEmpty(row.Fields(u"Name"_s).Value()),
        .width = line.opening.width,
        .height = line.opening.height,
        .sizes = {},
    };
    addParts(row, line, calculation::seriesOf(line, explained.series, catalogue), explained);
    addShutter(row, line.opening, explained);
    return explained;
}

} // namespace shop

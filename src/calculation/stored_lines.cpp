#include "calculation/stored_lines.h"

#include "calculation/line_words.h"
#include "calculation/series_reading.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "store/line_columns.h"

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

double numberAt(dao::Recordset& line, int ordinal)
{
    const QVariant value = line.Fields(ordinal).Value();
    return runtime::isNull(value) ? 0 : runtime::toDouble(value);
}

cuts::Size sizeAt(dao::Recordset& line, int widthOrdinal)
{
    return {numberAt(line, widthOrdinal), numberAt(line, widthOrdinal + 1)};
}

QString textIn(dao::Recordset& row, const QString& field)
{
    return runtime::textOrEmpty(row.Fields(field).Value());
}

} // namespace

std::vector<NamedSeries> readCatalogue(dao::Database& database)
{
    std::vector<NamedSeries> catalogue;
    const auto series = database.OpenRecordset(u"Serials"_s, dao::dbOpenTable);
    for (; !series->isEof(); series->MoveNext())
        catalogue.push_back({textIn(*series, u"Name"_s),
                             {readSeries(*series), textIn(*series, u"Sign"_s) == doorSign}});
    return catalogue;
}

cuts::ComputedLine readLine(dao::Recordset& line)
{
    cuts::ComputedLine read;
    read.opening = sizeAt(line, store::line::openingWidth);
    read.isMonoblock =
        isMonoblockKind(runtime::textOrEmpty(line.Fields(store::line::windowKind).Value()));
    // The height that the monoblock leaves is computed as the height of the opening minus the
    // height of the shutter box. It is not read from its field, because in a door line this field
    // contains the height of the door's inner opening.
    read.reduced = {numberAt(line, store::line::firstOfShutter),
                    read.opening.height - numberAt(line, store::line::boxHeight)};
    constexpr int thickness = store::line::firstOfShutter + 2;
    read.doorThickness = numberAt(line, thickness);
    for (const cuts::Part part : cuts::allParts) {
        read.parts[part] = sizeAt(line, store::line::cutWidth(part));
        read.counts[part] = numberAt(line, store::line::count(part));
    }
    return read;
}

const cuts::TodaysSeries* seriesOf(const cuts::ComputedLine& line, const QString& name,
                                   const std::vector<NamedSeries>& catalogue)
{
    const cuts::TodaysSeries* first = nullptr;
    for (const NamedSeries& each : catalogue) {
        if (each.name != name)
            continue;
        if (cuts::followsFrom(line, each.series))
            return &each.series;
        if (first == nullptr)
            first = &each.series;
    }
    return first;
}

} // namespace calculation

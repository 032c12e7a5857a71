#include "calculation/figure_tips.h"

#include "base/module1.h"
#include "calculation/explained_cuts.h"
#include "calculation/line_words.h"
#include "calculation/series_reading.h"
#include "output/form_view.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"
#include "store/line_columns.h"
#include "store/store_access.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

constexpr std::array allParts{cuts::Mashkof, cuts::Kanaf, cuts::Glass, cuts::Reshet};

void setTips(output::FormView& view, const QString& tip)
{
    for (const cuts::Part part : allParts) {
        view.LabelWidth[part]->setToolTip(tip);
        view.LabelHeight[part]->setToolTip(tip);
    }
}

void setTips(output::FormView& view, const cuts::ComputedLine& line,
             const cuts::TodaysSeries& series)
{
    for (const cuts::Part part : allParts) {
        view.LabelWidth[part]->setToolTip(cuts::explainedWidth(line, part, series));
        view.LabelHeight[part]->setToolTip(cuts::explainedHeight(line, part, series));
    }
}

cuts::ComputedLine computedLine()
{
    const auto& values = Module1::CutValues;
    cuts::ComputedLine line;
    line.opening = {values[0], values[1]};
    line.isMonoblock = Module1::IsMonoblock;
    line.reduced = {runtime::toDouble(Module1::MyWidth_2), Module1::MYHeight_2};
    if (Module1::IsDoorFrame)
        line.doorThickness = runtime::toDouble(Module1::U_Thick);
    for (const cuts::Part part : allParts) {
        const std::size_t cell = store::line::measureIndex(store::line::cutWidth(part));
        line.parts[part] = {values[cell], values[cell + 1]};
    }
    return line;
}

/// Returns 0 for a Null, which a line of another program may have.
double numberAt(dao::Recordset& line, int ordinal)
{
    const QVariant value = line.Fields(ordinal).Value();
    return runtime::isNull(value) ? 0 : runtime::toDouble(value);
}

cuts::Size sizeAt(dao::Recordset& line, int widthOrdinal)
{
    return {numberAt(line, widthOrdinal), numberAt(line, widthOrdinal + 1)};
}

cuts::ComputedLine storedLine(dao::Recordset& line)
{
    cuts::ComputedLine stored;
    stored.opening = sizeAt(line, store::line::openingWidth);
    stored.isMonoblock =
        runtime::textOrEmpty(line.Fields(store::line::windowKind).Value()) != ordinaryKind();
    // A door's frame has replaced the reduced height, but the box height is the same deduction.
    stored.reduced = {numberAt(line, store::line::firstOfShutter),
                      stored.opening.height - numberAt(line, store::line::boxHeight)};
    constexpr int thickness = store::line::firstOfShutter + 2;
    stored.doorThickness = numberAt(line, thickness);
    for (const cuts::Part part : allParts)
        stored.parts[part] = sizeAt(line, store::line::cutWidth(part));
    return stored;
}

/// Returns nothing if the catalogue has no series of this name.
std::optional<cuts::TodaysSeries> seriesOf(const cuts::ComputedLine& line, const QString& name)
{
    const auto catalogue = store::OpenMyDataBase()->OpenRecordset(u"Serials"_s, dao::dbOpenTable);
    std::optional<cuts::TodaysSeries> found;
    for (; !catalogue->isEof(); catalogue->MoveNext()) {
        if (runtime::textOrEmpty(catalogue->Fields(u"Name"_s).Value()) != name)
            continue;
        const cuts::TodaysSeries series{
            readSeries(*catalogue),
            runtime::textOrEmpty(catalogue->Fields(u"Sign"_s).Value()) == doorSign};
        if (cuts::followsFrom(line, series))
            return series;
        if (!found)
            found = series;
    }
    return found;
}

} // namespace

void explainComputedLine(output::FormView& view, dao::Recordset& series)
{
    try {
        setTips(view, computedLine(), {readSeries(series), Module1::IsDoorFrame});
    } catch (const runtime::RunTimeError&) {
        setTips(view, QString());
    }
}

void explainStoredLine(output::FormView& view, dao::Recordset& line)
{
    try {
        const cuts::ComputedLine stored = storedLine(line);
        const QString name = runtime::textOrEmpty(line.Fields(u"Name"_s).Value());
        if (const auto series = seriesOf(stored, name))
            setTips(view, stored, *series);
        else
            setTips(view, u"הסדרה כבר אינה בקטלוג, ולכן אין הסבר למידה."_s);
    } catch (const runtime::RunTimeError&) {
        setTips(view, QString());
    }
}

} // namespace calculation

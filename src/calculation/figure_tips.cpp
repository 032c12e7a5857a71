#include "calculation/figure_tips.h"

#include "base/module1.h"
#include "calculation/explained_cuts.h"
#include "calculation/series_reading.h"
#include "calculation/stored_lines.h"
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

void setTips(output::FormView& view, const QString& tip)
{
    for (const cuts::Part part : cuts::allParts) {
        view.LabelWidth[part]->setToolTip(tip);
        view.LabelHeight[part]->setToolTip(tip);
    }
}

void setTips(output::FormView& view, const cuts::ComputedLine& line,
             const cuts::TodaysSeries& series)
{
    for (const cuts::Part part : cuts::allParts) {
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
    for (const cuts::Part part : cuts::allParts) {
        const std::size_t cell = store::line::measureIndex(store::line::cutWidth(part));
        line.parts[part] = {values[cell], values[cell + 1]};
    }
    return line;
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
        const cuts::ComputedLine stored = readLine(line);
        const QString name = runtime::textOrEmpty(line.Fields(u"Name"_s).Value());
        const auto catalogue = readCatalogue(*store::OpenMyDataBase());
        if (const cuts::TodaysSeries* series = seriesOf(stored, name, catalogue))
            setTips(view, stored, *series);
        else
            setTips(view, cuts::explainedMissingSeries());
    } catch (const runtime::RunTimeError&) {
        setTips(view, QString());
    }
}

} // namespace calculation

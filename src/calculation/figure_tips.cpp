#include "calculation/figure_tips.h"

#include "base/module1.h"
#include "calculation/explained_cuts.h"
#include "calculation/series_reading.h"
#include "calculation/stored_lines.h"
#include "output/form_view.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/run_time_error.h"
#include "store/line_columns.h"
#include "store/store_access.h"

#include <QEvent>
#include <QLabel>

#include <utility>

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

/// Fills the tool tips of a stored line when one of them is shown for the first time.
class StoredLineTips : public QObject
{
public:
    StoredLineTips(output::FormView& view, const cuts::ComputedLine& line, const QString& name)
        : QObject(&view), view_(view), line_(line), name_(name)
    {
        setObjectName(tipsName);
        for (const cuts::Part part : cuts::allParts) {
            view.LabelWidth[part]->installEventFilter(this);
            view.LabelHeight[part]->installEventFilter(this);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ToolTip && !std::exchange(areFilled_, true))
            runtime::guarded([this] { fill(); });
        return QObject::eventFilter(watched, event);
    }

    static constexpr QLatin1StringView tipsName{"StoredLineTips"};

private:
    void fill()
    {
        try {
            const auto catalogue = readCatalogue(*store::OpenMyDataBase());
            if (const cuts::TodaysSeries* series = seriesOf(line_, name_, catalogue))
                setTips(view_, line_, *series);
            else
                setTips(view_, cuts::explainedMissingSeries());
        } catch (const runtime::RunTimeError&) {
            setTips(view_, QString());
        }
    }

    output::FormView& view_;
    const cuts::ComputedLine line_;
    const QString name_;
    bool areFilled_ = false;
};

/// Removes the tips of the line that the view showed before.
void clearTips(output::FormView& view)
{
    delete view.findChild<QObject*>(StoredLineTips::tipsName, Qt::FindDirectChildrenOnly);
    setTips(view, QString());
}

} // namespace

void explainComputedLine(output::FormView& view, dao::Recordset& series)
{
    clearTips(view);
    try {
        setTips(view, computedLine(), {readSeries(series), Module1::IsDoorFrame});
    } catch (const runtime::RunTimeError&) {
        setTips(view, QString());
    }
}

void explainStoredLine(output::FormView& view, dao::Recordset& line)
{
    clearTips(view);
    try {
        const cuts::ComputedLine stored = readLine(line);
        new StoredLineTips(view, stored, runtime::textOrEmpty(line.Fields(u"Name"_s).Value()));
    } catch (const runtime::RunTimeError&) {
        // A line that cannot be read has no tips.
        return;
    }
}

} // namespace calculation

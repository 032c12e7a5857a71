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

#include <vector>

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

std::vector<QLabel*> figuresOf(const output::FormView& view)
{
    std::vector<QLabel*> figures{view.LabelOpenWidth, view.LabelOpenHeight};
    for (const cuts::Part part : cuts::allParts)
        figures.insert(figures.end(),
                       {view.LabelWidth[part], view.LabelHeight[part], view.LabelCount[part]});
    return figures;
}

void emptyTips(output::FormView& view)
{
    for (QLabel* figure : figuresOf(view))
        figure->setToolTip(QString());
}

/// Sets the tool tips for the figures of a line. If `series` is nullptr, the tool tips say that the
/// series has been deleted.
void setTips(output::FormView& view, const cuts::ComputedLine& line,
             const cuts::TodaysSeries* series)
{
    using cuts::Side;
    view.LabelOpenWidth->setToolTip(explainedOpening(line, Side::Width, series));
    view.LabelOpenHeight->setToolTip(explainedOpening(line, Side::Height, series));
    for (const cuts::Part part : cuts::allParts) {
        view.LabelWidth[part]->setToolTip(explainedSize(line, part, Side::Width, series));
        view.LabelHeight[part]->setToolTip(explainedSize(line, part, Side::Height, series));
        view.LabelCount[part]->setToolTip(explainedCount(line, part, series));
    }
}

/// Returns the line that ComputeCuts computed last. The numbers of pieces are computed from the
/// series, as in the line view.
cuts::ComputedLine computedLine(const cuts::Series& series)
{
    const auto& values = Module1::CutValues;
    cuts::ComputedLine line;
    line.isStored = false;
    line.opening = {values[0], values[1]};
    line.isMonoblock = Module1::IsMonoblock;
    if (line.isMonoblock)
        line.reduced = {values[0] - runtime::toDouble(Module1::MonoWidthDeduct),
                        values[1] - Module1::MonoHeightDeduct};
    if (Module1::IsDoorFrame)
        line.doorThickness = runtime::toDouble(Module1::U_Thick);
    for (const cuts::Part part : cuts::allParts) {
        const std::size_t cell = store::line::measureIndex(store::line::cutWidth(part));
        line.parts[part] = {values[cell], values[cell + 1]};
    }
    const double sashes = series.kanafNum.value_or(0);
    line.counts = {cuts::framePieces, 2 * sashes, sashes, sashes};
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
        for (QLabel* figure : figuresOf(view))
            figure->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ToolTip && !areFilled_)
            runtime::guarded([this] { fill(); });
        return QObject::eventFilter(watched, event);
    }

    static constexpr QLatin1StringView tipsName{"StoredLineTips"};

private:
    void fill()
    {
        try {
            const auto catalogue = readCatalogue(*store::OpenMyDataBase());
            setTips(view_, line_, seriesOf(line_, name_, catalogue));
            areFilled_ = true;
        } catch (const runtime::RunTimeError&) {
            for (QLabel* figure : figuresOf(view_))
                figure->setToolTip(u"אי אפשר לקרוא את הקטלוג, ולכן אין הסבר."_s);
        }
    }

    output::FormView& view_;
    const cuts::ComputedLine line_;
    const QString name_;
    bool areFilled_ = false;
};

/// Removes the tool tips of the line that the view showed before.
void clearTips(output::FormView& view)
{
    delete view.findChild<QObject*>(StoredLineTips::tipsName, Qt::FindDirectChildrenOnly);
    emptyTips(view);
}

} // namespace

void explainComputedLine(output::FormView& view, dao::Recordset& series)
{
    clearTips(view);
    try {
        const cuts::TodaysSeries used{readSeries(series), Module1::IsDoorFrame};
        setTips(view, computedLine(used.series), &used);
    } catch (const runtime::RunTimeError&) {
        emptyTips(view);
    }
}

void explainStoredLine(output::FormView& view, dao::Recordset& line)
{
    clearTips(view);
    try {
        const cuts::ComputedLine stored = readLine(line);
        new StoredLineTips(view, stored, runtime::textOrEmpty(line.Fields(u"Name"_s).Value()));
    } catch (const runtime::RunTimeError&) {
        // If the line cannot be read, its figures have no tool tips.
        return;
    }
}

} // namespace calculation

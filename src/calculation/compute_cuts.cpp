#include "calculation/opening_panel.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "calculation/series_reading.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/conversions.h"
#include "store/line_columns.h"
#include "store/store_access.h"

#include <QLabel>

using namespace Qt::StringLiterals;

// The order in which ComputeCuts writes its results to the shared variables must not change. If a
// step fails, the variables keep the results of the earlier steps.
namespace calculation {

namespace {

/// Returns the index of a part's cut width in Module1::CutValues. The part's cut height has the
/// next index.
constexpr std::size_t widthCell(cuts::Part part)
{
    return store::line::measureIndex(store::line::cutWidth(part));
}

void clearShutter()
{
    Module1::MyWidth_2 = 0.0;
    Module1::MYHeight_2 = 0;
    Module1::Argaz_Width = 0.0;
    Module1::Argaz_Height = 0;
    Module1::U_Cut = 0.0;
    Module1::U_Vasa = 0.0;
    Module1::Shalav_Width = 0.0;
    Module1::Shalav_Count = 0;
}

void computeShutter(const cuts::Size& opening)
{
    const cuts::Monoblock monoblock{.widthDeduct = runtime::toDouble(Module1::MonoWidthDeduct),
                                    .heightDeduct = Module1::MonoHeightDeduct,
                                    .shalavWidthDeduct =
                                        runtime::toDouble(Module1::ShalavWidthDeduct),
                                    .shalavThick = runtime::toDouble(Module1::Shalav_Thick)};
    const cuts::Shutter shutter = cuts::shutter(opening, monoblock);
    Module1::MyWidth_2 = shutter.reduced.width;
    Module1::MYHeight_2 = shutter.reduced.height;
    Module1::U_Cut = shutter.uCut;
    Module1::U_Vasa = shutter.uVasa;
    Module1::Shalav_Width = shutter.shalavWidth;
    Module1::Shalav_Count = cuts::shalavCount(opening, monoblock);
    Module1::Argaz_Width = shutter.argaz.width;
    Module1::Argaz_Height = shutter.argaz.height;
}

void computeParts(const cuts::Size& opening, const cuts::Series& series)
{
    cuts::Size base = opening;
    if (Module1::IsMonoblock)
        base = {runtime::toDouble(Module1::MyWidth_2), Module1::MYHeight_2};
    for (const cuts::Part part : cuts::allParts) {
        Module1::CutValues[widthCell(part)] = cuts::cutWidth(series, part, base);
        Module1::CutValues[widthCell(part) + 1] = cuts::cutHeight(series, part, base);
    }
}

/// Replaces the results for a window by the results for a door. The sash is computed from the
/// door's inner opening. The sizes of glass and mesh become 0. The cut sizes of the frame stay
/// unchanged.
void computeDoor(const cuts::Size& opening, double thickness, const cuts::Series& series)
{
    const cuts::Size door = cuts::doorOpening(opening, thickness);
    Module1::DoorOpenWidth = door.width;
    Module1::MyWidth_2 = door.width;
    Module1::MYHeight_2 = door.height;
    Module1::U_Thick = thickness;
    constexpr std::size_t sash = widthCell(cuts::Kanaf);
    Module1::CutValues[sash] = cuts::cutWidth(series, cuts::Kanaf, door);
    Module1::CutValues[sash + 1] = cuts::cutHeight(series, cuts::Kanaf, door);
    for (std::size_t cell = widthCell(cuts::Glass); cell < store::line::measureCount; ++cell)
        Module1::CutValues[cell] = 0;
}

} // namespace

void OpeningPanel::ComputeCuts()
{
    cuts::Size opening;
    opening.width = Picture1[0]->measure();
    Module1::MyWidth = opening.width;
    opening.height = Picture1[1]->measure();
    Module1::MYHeight = opening.height;
    clearShutter();
    if (Module1::IsMonoblock) {
        computeShutter(opening);
    } else {
        Module1::U_Thick = 0.0;
        Module1::Shalav_Thick = 0.0;
    }

    if (!seekSeries())
        return;

    for (std::size_t cell = 0; cell < store::line::measureCount; ++cell)
        Module1::CutValues[cell] = 0;
    Module1::CutValues[0] = opening.width;
    Module1::CutValues[1] = opening.height;
    const cuts::Series series = readSeries(DataSerial->Recordset());
    computeParts(opening, series);
    if (Module1::IsDoorFrame)
        computeDoor(opening, Picture1[2]->measure(), series);
    Module1::KindCaption = LabelKind->text();
    Module1::CutValues[10] = runtime::toDouble(Module1::MyWidth_2);
    Module1::CutValues[11] = Module1::MYHeight_2;
}

bool OpeningPanel::seekSeries()
{
    DataSerial->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(u"Serials"_s, dao::dbOpenTable));
    dao::TableDef table = DataSerial->Database().tableDefs()(u"Serials"_s);
    dao::Recordset& series = DataSerial->Recordset();
    series.SetIndex(table.indexes()(0).Name());
    series.Seek(u"="_s, int{Module1::SelectedSerialNum});
    return !series.NoMatch();
}

} // namespace calculation

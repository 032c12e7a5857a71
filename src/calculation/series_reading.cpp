#include "calculation/series_reading.h"

#include "platform/dao/recordset.h"
#include "platform/runtime/conversions.h"

using namespace Qt::StringLiterals;

namespace calculation {

namespace {

std::optional<double> number(dao::Recordset& series, const QString& field)
{
    const QVariant value = series.Fields(field).Value();
    if (runtime::isNull(value))
        return std::nullopt;
    return runtime::toDouble(value);
}

} // namespace

cuts::Series readSeries(dao::Recordset& series)
{
    cuts::Series read;
    read.deductions[cuts::Mashkof] = {number(series, u"Mashkof_W"_s),
                                      number(series, u"Mashkof_H"_s)};
    read.deductions[cuts::Kanaf] = {number(series, u"Kanaf_W"_s), number(series, u"Kanaf_H"_s)};
    read.deductions[cuts::Glass] = {number(series, u"Glass_W"_s), number(series, u"Glass_H"_s)};
    read.deductions[cuts::Reshet] = {number(series, u"Reshet_W"_s), number(series, u"Reshet_H"_s)};
    read.kanafNum = number(series, u"Kanaf_Num"_s);
    return read;
}

} // namespace calculation

#pragma once

#include "platform/report/row_source.h"

#include <memory>

namespace ado {
class Recordset;
}

namespace output {

/// Returns a record source that supplies the rows of a query to a report.
std::shared_ptr<report::RowSource> rowsOf(std::shared_ptr<ado::Recordset> query);

} // namespace output

#pragma once

#include "platform/report/row_source.h"

#include <memory>

namespace ado {
class Recordset;
}

namespace output {

/// Returns the rows of a query as the record source of a report.
std::shared_ptr<report::RowSource> rowsOf(std::shared_ptr<ado::Recordset> query);

} // namespace output

#pragma once

#include "output/order_report_design.h"
#include "platform/report/data_report.h"

namespace output {

/// Returns the single order report. The first call creates the report, which exists until the
/// program ends. Properties that are set once, such as a logo, keep their value.
report::DataReport& dataReport1();

} // namespace output

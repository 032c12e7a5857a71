#pragma once

#include "output/order_report_design.h"
#include "platform/report/data_report.h"

namespace output {

/// The order report, made at its first use and kept for the rest of the run: what was set once
/// (a logo) stays until it is set again.
report::DataReport& dataReport1();

} // namespace output

#pragma once

#include "platform/report/data_report.h"

namespace output {

/// The design of the order report, in twips.
extern const report::ReportDesign orderReportDesign;

/// The order report, made at its first use and kept for the rest of the run: what was set once
/// (a logo) stays until it is set again.
report::DataReport& dataReport1();

} // namespace output

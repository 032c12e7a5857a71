#pragma once

#include "platform/report/design.h"

namespace output {

/// The design of the order report. All its measures are in twips.
extern const report::ReportDesign orderReportDesign;

} // namespace output

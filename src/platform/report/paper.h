#pragma once

#include "platform/report/pagination.h"

class QPageLayout;

namespace report {

/// Returns the size of a page layout's whole sheet, with width and height exchanged for landscape.
Paper paperOf(const QPageLayout& layout);

} // namespace report

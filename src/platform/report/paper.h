#pragma once

#include "platform/report/pagination.h"

class QPageLayout;

namespace report {

/// Returns the whole sheet of a page layout, turned as its orientation says.
Paper paperOf(const QPageLayout& layout);

} // namespace report

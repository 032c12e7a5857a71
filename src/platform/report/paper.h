#pragma once

#include "platform/report/pagination.h"

class QPageLayout;

namespace report {

/// Returns the size of the whole sheet of a page layout. For landscape, width and height are
/// exchanged.
Paper paperOf(const QPageLayout& layout);

} // namespace report

#pragma once

#include "platform/controls/row_remark.h"

namespace orders {

/// Returns the remark about a line of an order: why the line is probably a slip, one sentence on
/// each text line, or an empty text. The neighbours with which a line is compared are the 50 lines
/// above it and the 50 lines below it in the order; the line itself does not count.
controls::RowRemark lineRemark();

} // namespace orders

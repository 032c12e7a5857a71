#pragma once

#include "platform/controls/row_remark.h"

namespace orders {

/// Returns the function that makes the remark about a line of an order. The remark says why the
/// line probably contains a typing mistake, with one sentence in each text line. The remark is
/// empty for an ordinary line. A line is compared with the 50 lines above it and the 50 lines below
/// it in the order.
controls::RowRemark lineRemark();

} // namespace orders

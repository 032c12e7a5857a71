#pragma once

#include "platform/controls/row_remark.h"

namespace orders {

/// Returns how a grid remarks on the lines of an order: the function that makes the remark, and how
/// many lines around a line it reads. The remark says why the line probably contains a typing
/// mistake, with one sentence in each text line. The remark is empty for an ordinary line. A line
/// is compared with the 50 lines above it and the 50 lines below it in the order, but not with
/// itself.
controls::RowRemark lineRemark();

} // namespace orders

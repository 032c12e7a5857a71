#pragma once

#include "platform/controls/row_remark.h"

namespace orders {

/// Returns the function with which a grid finds typing mistakes in the lines of an order, and the
/// number of lines around a line that the function reads. The function compares a line with the 50
/// lines above it and the 50 lines below it. It returns the reasons why the line is probably wrong,
/// with one sentence in each text line, or an empty text for an ordinary line.
controls::RowRemark lineRemark();

} // namespace orders

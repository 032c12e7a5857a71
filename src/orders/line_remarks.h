#pragma once

#include <QString>

namespace dao {
class RecordsetPages;
}

namespace orders {

/// Returns why the line in this row of an order is probably a slip, one sentence on each text line,
/// or an empty text. Reads only rows that are loaded already: the line and its neighbours. Does not
/// throw.
QString lineRemark(const dao::RecordsetPages& lines, int row);

} // namespace orders

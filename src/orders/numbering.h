#pragma once

#include <QString>

#include <cstdint>
#include <functional>

namespace controls {
class DataControl;
}

namespace dao {
class Recordset;
}

/// The numbers of orders. They are taken from the last order alone: gaps are not filled.
namespace orders {

/// Binds the table of orders to the holder, in the order of the table's first index, which is by
/// number. Raises 3265 where the table has no index.
void bindOrdersTable(controls::DataControl& holder);

/// Makes the number after the current row's the current order and adds its row, dated today.
/// Raises 6, and adds nothing, where the number leaves 16 bits.
void addOrderAfterCurrent(dao::Recordset& orderRows);

/// Follows a rule that looks at the last order and may add the next one. Where another station has
/// taken its number in between, the rule is followed again over the orders as they then stand; any
/// other duplicate is none of its business and goes on as 3022.
void untilNumberIsFree(dao::Recordset& orderRows, const std::function<void()>& rule);

/// The new-order rule: the last order becomes the current one while it is open, so that no number
/// is ever spent on an order that was left empty; otherwise the next one is added. The first order
/// of all is 1. Leaves the table bound to dataMDI, on the row that was the last before.
void continueOrAddOrder(controls::DataControl& dataMDI);

/// The query of all lines of an order as the grids show them.
QString linesQuery(const QString& number);
/// The query of the order's own row.
QString orderQuery(std::int16_t number);

} // namespace orders

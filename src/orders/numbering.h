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

/// The numbering of orders. A new number depends only on the last order; gaps are not filled.
namespace orders {

/// Binds the data control to the table Orders, sorted by order number, which is the key of the
/// table's first index. Throws ItemNotFound (3265) if the table has no index.
void bindOrdersTable(controls::DataControl& holder);

/// Sets CurrentOrderNum to the number of the current row plus one and adds a row for that order
/// with today's date. Throws Overflow (6) and adds nothing if the number exceeds 16 bits.
void addOrderAfterCurrent(dao::Recordset& orderRows);

/// Runs a rule that reads the last order and may add the next one. If adding fails because another
/// station has taken the number, the rule runs again on the current table. Throws DuplicateKey
/// (3022) for any other duplicate.
void untilNumberIsFree(dao::Recordset& orderRows, const std::function<void()>& rule);

/// Applies the new-order rule. If the last order is open, it becomes the current order, so an order
/// that was left empty does not use up a number. Otherwise the next order is added. The first order
/// has the number 1. Leaves dataMDI bound to the table Orders, positioned on the row that was last
/// before the call.
void continueOrAddOrder(controls::DataControl& dataMDI);

/// Returns the query of all lines of an order, sorted as the grids show them.
QString linesQuery(const QString& number);
/// Returns the query of the order's row in the table Orders.
QString orderQuery(std::int16_t number);

} // namespace orders

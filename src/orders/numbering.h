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

/// Functions that assign numbers to orders. The number of a new order depends only on the last
/// order. Gaps between the numbers are not filled.
namespace orders {

/// Binds the data control to the table Orders, sorted by order number, which is the key of the
/// table's first index. Throws ItemNotFound (3265) if the table has no index.
void bindOrdersTable(controls::DataControl& holder);

/// Sets CurrentOrderNum to the order number of the current row plus one, and adds an order with
/// this number and today's date. Throws Overflow (6) and adds nothing if the number exceeds 16
/// bits.
void addOrderAfterCurrent(dao::Recordset& orderRows);

/// Runs the function `rule`, which may add an order with the number after that of the last order.
/// If another station has used this number in the meantime, runs `rule` again with the current
/// contents of the table. Throws DuplicateKey (3022) for any other duplicate key.
void untilNumberIsFree(dao::Recordset& orderRows, const std::function<void()>& rule);

/// Makes the last order the current order if its field Open_Close is 0, which means that the order
/// is not closed yet. Therefore an order that was left without lines does not waste a number.
/// Otherwise adds an order with the next number, or with the number 1 if there is no order.
///
/// Afterwards dataMDI is bound to the table Orders. After an addition, its current row is the row
/// that was the last row before the call, and not the added order. If there was no order before the
/// call, it is the added order.
void continueOrAddOrder(controls::DataControl& dataMDI);

/// Returns the text of the query that selects the order with this number from the table Orders.
QString orderQuery(std::int16_t number);

} // namespace orders

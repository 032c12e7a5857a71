#include "orders/numbering.h"

#include "base/module1.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"
#include "store/store_access.h"

using namespace Qt::StringLiterals;

namespace orders {

namespace {

/// Adds a row with the current order number and today's date to the table Orders. The order's state
/// and its customer fields get the store's default values.
void addCurrentOrder(dao::Recordset& orderRows)
{
    orderRows.AddNew();
    orderRows.Fields(u"Number"_s).SetValue(Module1::CurrentOrderNum);
    orderRows.Fields(u"Order_Date"_s).SetValue(runtime::Today());
    orderRows.Update();
}

bool isStillOpen(const QVariant& openClose)
{
    return !runtime::isNull(openClose) && runtime::toDouble(openClose) == 0;
}

/// Makes the last order the current order if its field Open_Close is 0, which means that the order
/// is not closed yet. Otherwise adds the next order. Throws DuplicateKey (3022) if another station
/// has used the number of the next order.
void applyNewOrderRule(dao::Recordset& orderRows)
{
    if (orderRows.RecordCount() == 0) {
        Module1::CurrentOrderNum = 1;
        addCurrentOrder(orderRows);
        return;
    }
    orderRows.MoveLast();
    if (isStillOpen(orderRows.Fields(u"Open_Close"_s).Value()))
        Module1::CurrentOrderNum = runtime::toInt16(orderRows.Fields(u"Number"_s).Value());
    else
        addOrderAfterCurrent(orderRows);
}

/// Returns true if another station has added an order with the current order number or a higher
/// number. Afterwards the last order is the current row.
bool numberIsTaken(dao::Recordset& orderRows)
{
    if (orderRows.RecordCount() == 0)
        return false;
    orderRows.MoveLast();
    const QVariant last = orderRows.Fields(u"Number"_s).Value();
    return !runtime::isNull(last) && runtime::toDouble(last) >= Module1::CurrentOrderNum;
}

} // namespace

void bindOrdersTable(controls::DataControl& holder)
{
    holder.setRecordset(store::OpenMyDataBase()->OpenRecordset(u"Orders"_s, dao::dbOpenTable));
    dao::TableDef definition = holder.Database().tableDefs()(u"Orders"_s);
    holder.Recordset().SetIndex(definition.indexes()(0).Name());
}

void addOrderAfterCurrent(dao::Recordset& orderRows)
{
    const double number = runtime::toDouble(orderRows.Fields(u"Number"_s).Value());
    Module1::CurrentOrderNum = runtime::toInt16(number + 1);
    addCurrentOrder(orderRows);
}

void untilNumberIsFree(dao::Recordset& orderRows, const std::function<void()>& rule)
{
    for (;;) {
        try {
            rule();
            return;
        } catch (const runtime::RunTimeError& error) {
            if (error.number() != runtime::DuplicateKey || !numberIsTaken(orderRows))
                throw;
        }
    }
}

void continueOrAddOrder(controls::DataControl& dataMDI)
{
    bindOrdersTable(dataMDI);
    dao::Recordset& orderRows = dataMDI.Recordset();
    untilNumberIsFree(orderRows, [&orderRows] { applyNewOrderRule(orderRows); });
}

QString orderQuery(std::int16_t number)
{
    return u"SELECT * FROM Orders WHERE Number = "_s + QString::number(number);
}

} // namespace orders

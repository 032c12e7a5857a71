#include "orders/numbering.h"

#include "platform/controls/data_control.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"
#include "shell/base/module1.h"
#include "store/store_access.h"

using namespace Qt::StringLiterals;

namespace orders {

namespace {

/// Adds the row of the current order. Its state and its customer fields get the store's default
/// values.
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

/// Applies the new-order rule once to the current contents of the table.
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

/// Returns true if another station has added an order with the current number or a higher one.
/// Leaves the recordset on the last order.
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

QString linesQuery(const QString& number)
{
    return u"SELECT * FROM CUTS WHERE ORDER_NUM = "_s + number + u" ORDER BY ORDER_DATE ASC"_s;
}

QString orderQuery(std::int16_t number)
{
    return u"SELECT * FROM Orders WHERE Number = "_s + QString::number(number);
}

} // namespace orders

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

/// Adds the current order's row. Its state and its customer are the store's defaults.
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

/// The rule as it is stated, over the table as it stands now.
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

/// Whether the last order is another one than that on which the recordset stands, if it stands on
/// any. It stands on the last one afterwards.
bool lastOrderHasChanged(dao::Recordset& orderRows)
{
    const dao::RowKey seen = orderRows.currentKey();
    if (orderRows.RecordCount() == 0)
        return false;
    orderRows.MoveLast();
    return orderRows.currentKey() != seen;
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

void continueOrAddOrder(controls::DataControl& dataMDI)
{
    bindOrdersTable(dataMDI);
    dao::Recordset& orderRows = dataMDI.Recordset();
    try {
        applyNewOrderRule(orderRows);
    } catch (const runtime::RunTimeError& error) {
        // Another station may have taken the number since the last order was looked at. Then the
        // rule finds that station's order; any other duplicate is none of its business.
        if (error.number() != runtime::DuplicateKey || !lastOrderHasChanged(orderRows))
            throw;
        applyNewOrderRule(orderRows);
    }
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

#include "orders/orders.h"

#include "base/input_boxes.h"
#include "base/key_helpers.h"
#include "base/module1.h"
#include "calculation/opening_panel.h"
#include "orders/form_find_order.h"
#include "orders/fr_order.h"
#include "orders/numbering.h"
#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/conversions.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

/// Returns the date of the order in the current row of the table Orders. Adding an order does not
/// change the current row. After an addition, the date is therefore still that of the previous
/// order, or that of the added order if there was no previous one. If there is no current row, the
/// last order becomes current first.
QString currentOrderDate(dao::Recordset& orderRows)
{
    if (!orderRows.hasCurrent())
        orderRows.MoveLast();
    return runtime::toText(orderRows.Fields(u"Order_Date"_s).Value());
}

} // namespace

void openOrderLongForm(controls::DataControl& dataMDI)
{
    continueOrAddOrder(dataMDI);
    FrOrder& form = frOrder();
    form.head().LabelOrderNum->setText(QString::number(Module1::CurrentOrderNum));
    form.head().LabelOrderDate->setText(currentOrderDate(dataMDI.Recordset()));
    dataMDI.Database().Close();
    form.commands().CmdOpenOrder->setEnabled(false);
    form.bindLines(Module1::CurrentOrderNum);
    Module1::SelectAllText(*form.opening().TextNum[0]);
    form.Show();
}

void openOrderShortForm(controls::DataControl& dataMDI)
{
    continueOrAddOrder(dataMDI);
    frOrder().Show();
}

void findOrder()
{
    findOrder([](std::int16_t number) { frOrder().GetOrderDetails(number); });
}

} // namespace orders

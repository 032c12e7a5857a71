#include "orders/orders.h"

#include "calculation/opening_panel.h"
#include "orders/form_find_order.h"
#include "orders/fr_order.h"
#include "orders/numbering.h"
#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "platform/controls/data_control.h"
#include "platform/controls/form.h"
#include "platform/runtime/conversions.h"
#include "shell/base/input_boxes.h"
#include "shell/base/module1.h"

#include <QLabel>
#include <QMdiArea>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

/// Returns the order date of the current row. After an order has been added, the current row is
/// still the order before it. For the very first order it returns that order's own date.
QString currentOrderDate(dao::Recordset& orderRows)
{
    if (!orderRows.hasCurrent())
        orderRows.MoveLast();
    return runtime::toText(orderRows.Fields(u"Order_Date"_s).Value());
}

} // namespace

FrOrder& frOrder()
{
    static controls::DefaultInstance<FrOrder> instance;
    if (instance.isLoaded())
        return instance();
    calculation::setOpeningPanelProvider(
        []() -> calculation::OpeningPanel& { return frOrder().opening(); });
    FrOrder& loaded = instance();
    loaded.Show();
    return loaded;
}

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
    QMdiArea* frame = controls::frame();
    FormFindOrder form(frame != nullptr ? frame->window() : nullptr);
    form.exec();
}

} // namespace orders

// The commands of the order form, each handler under its button's name.

#include "orders/fr_order.h"
#include "orders/numbering.h"
#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "orders/orders.h"
#include "output/form_view.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "shell/base/module1.h"

#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

constexpr int refusal = runtime::vbCritical + runtime::vbMsgBoxRtlReading;

/// Asks with Yes and No; only Yes acts.
bool isConfirmed(const QString& question, const QString& title)
{
    constexpr int flags = runtime::vbYesNo + runtime::vbQuestion + runtime::vbMsgBoxRtlReading;
    return runtime::MsgBox(question, flags, title) == runtime::vbYes;
}

/// Equal to 1 and not merely unequal to 0: a closed order in a Boolean column reads as -1, and the
/// command then refuses.
bool isMarkedClosed(const QVariant& openClose)
{
    return !runtime::isNull(openClose) && runtime::toDouble(openClose) == 1;
}

} // namespace

void FrOrder::connectCommands()
{
    const auto onClick = [this](QPushButton* button, void (FrOrder::*handler)()) {
        runtime::on(button, &QPushButton::clicked, this, [this, handler] { (this->*handler)(); });
    };
    onClick(commands().CmdView, &FrOrder::CmdView_Click);
    onClick(commands().CmdDel, &FrOrder::CmdDel_Click);
    onClick(commands().CmdDelAll, &FrOrder::CmdDelAll_Click);
    onClick(commands().CmdPrint, &FrOrder::CmdPrint_Click);
    onClick(commands().CmdFindOrder, &FrOrder::CmdFindOrder_Click);
    onClick(commands().CmdOpenOrder, &FrOrder::CmdOpenOrder_Click);
    onClick(commands().CmdCloseOrder, &FrOrder::CmdCloseOrder_Click);
    onClick(commands().Command2, &FrOrder::Command2_Click);
}

void FrOrder::CmdView_Click()
{
    dao::Recordset& lines = DataAllCuts->Recordset();
    if (lines.RecordCount() <= 0)
        return;
    output::FormView& view = output::formView();
    output::fillFromLine(view, lines);
    view.ShowModal();
}

void FrOrder::CmdDel_Click()
{
    dao::Recordset& lines = DataAllCuts->Recordset();
    if (lines.RecordCount() < 1)
        return;
    if (!isConfirmed(u"האם אתה בטוח שברצונך למחוק את ההזמנה הזו??"_s, u"מחיקת הזמנה"_s))
        return;
    lines.Delete();
    DataAllCuts->Refresh();
}

void FrOrder::CmdDelAll_Click()
{
    dao::Recordset& lines = DataAllCuts->Recordset();
    if (lines.RecordCount() < 1)
        return;
    if (!isConfirmed(u"האם אתה בטוח שברצונך למחוק את  כל הזמנות ??"_s, u"מחיקת הכל"_s))
        return;
    lines.MoveFirst();
    deleteLines(lines, lines.RecordCount());
}

/// Deletes that many rows from the current one on. Each is gone for good at once, which takes a
/// slow disk its time: what lasts longer than half a second is seen and can be stopped.
void FrOrder::deleteLines(dao::Recordset& lines, int count)
{
    QProgressDialog progress(u"מוחק שורות"_s, u"ביטול"_s, 0, count, this);
    progress.setWindowTitle(u"מחיקת הכל"_s);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(500);
    // The progress lets events through, and a tick would move the cursor away from here.
    const bool ticksLater = Timer1->isActive();
    Timer1->stop();
    for (int i = 0; i < count && !progress.wasCanceled(); ++i) {
        progress.setValue(i);
        lines.Delete();
        lines.MoveNext();
    }
    if (ticksLater)
        Timer1->start();
}

void FrOrder::CmdFindOrder_Click()
{
    findOrder();
    head().LabelLinesInOrder->setText(QString::number(DataAllCuts->Recordset().RecordCount()));
}

void FrOrder::CmdOpenOrder_Click()
{
    bindOrdersTable(*DataOrder);
    dao::Recordset& orderRows = DataOrder->Recordset();
    const std::int16_t shown = Module1::CurrentOrderNum;
    bool isRefused = false;
    untilNumberIsFree(orderRows, [&] {
        orderRows.MoveLast();
        isRefused = !isMarkedClosed(orderRows.Fields(u"Open_Close"_s).Value());
        if (!isRefused)
            addOrderAfterCurrent(orderRows);
    });
    if (isRefused) {
        Module1::CurrentOrderNum = shown;
        runtime::MsgBox(u"יש הזמנה פתוחה , סגור הזמנה קודם!!"_s, refusal, u"הזמנה פתוחה"_s);
        return;
    }
    DataOrder->Database().Close();
    commands().CmdOpenOrder->setEnabled(false);
    commands().CmdCloseOrder->setEnabled(true);
    bindLines(Module1::CurrentOrderNum);
}

void FrOrder::CmdCloseOrder_Click()
{
    if (DataAllCuts->Recordset().RecordCount() == 0) {
        runtime::MsgBox(u"לא ניתן לסגור הזמנה בגלל שאין אף שורה בהזמנה זו!"_s, refusal);
        return;
    }
    if (!isConfirmed(u"האם אתה בטוח שברצונך לסגור הזמנה זו?"_s, u"סגירת הזמנה"_s))
        return;
    SaveOrderDetails(true);
    commands().CmdOpenOrder->setEnabled(true);
    commands().CmdCloseOrder->setEnabled(false);
    CmdPrint_Click();
    Unload();
}

void FrOrder::Command2_Click()
{
    Unload();
}

} // namespace orders

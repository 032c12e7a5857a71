// This file contains the command handlers of the order form. Each handler is named after its
// button.

#include "base/module1.h"
#include "calculation/figure_tips.h"
#include "orders/form_find_order.h"
#include "orders/fr_order.h"
#include "orders/numbering.h"
#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "output/form_view.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"

#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

constexpr int refusal = runtime::vbCritical + runtime::vbMsgBoxRtlReading;

/// Shows a question with the buttons Yes and No. Returns true only if the user chooses Yes.
bool isConfirmed(const QString& question, const QString& title)
{
    constexpr int flags = runtime::vbYesNo + runtime::vbQuestion + runtime::vbMsgBoxRtlReading;
    return runtime::MsgBox(question, flags, title) == runtime::vbYes;
}

/// Returns true only if the field Open_Close equals 1. In a store in which the field is a Boolean
/// column, a closed order has the value -1 and therefore counts as not closed.
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
    calculation::explainStoredLine(view, lines);
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

/// Deletes the given number of rows, starting at the current row. Each deletion is committed to the
/// disk separately, which is slow on a slow disk. A progress dialog with a cancel button appears
/// after half a second.
void FrOrder::deleteLines(dao::Recordset& lines, int count)
{
    QProgressDialog progress(u"מוחק שורות"_s, u"ביטול"_s, 0, count, this);
    progress.setWindowTitle(u"מחיקת הכל"_s);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(500);
    // Timer1 is stopped during the deletion. The progress dialog processes events, and a timer
    // event would move the current row.
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
    findOrder([this](std::int16_t number) { GetOrderDetails(number); });
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

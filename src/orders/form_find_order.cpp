#include "orders/form_find_order.h"

#include "base/module1.h"
#include "orders/order_lines.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/form.h"
#include "platform/controls/makers.h"
#include "platform/controls/picture_button.h"
#include "platform/controls/png_icon.h"
#include "platform/controls/scroll_part.h"
#include "platform/controls/twips.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "store/store_access.h"

#include <QPushButton>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

QList<controls::DBGridColumn> orderColumns()
{
    return {
        {u"מס' טלפון"_s, u"CustomerTel"_s, 9, -1}, {u"כתובת"_s, u"CustomerAddress"_s, 14, -1},
        {u"שם לקוח"_s, u"CustomerName"_s, 14, -1}, {u"תאריך הזמנה"_s, u"Order_Date"_s, 9, -1},
        {u"מס' הזמנה"_s, u"Number"_s, 8, -1},      {u"Open_Close"_s, u"Open_Close"_s, 0, -1},
    };
}

QList<controls::DBGridColumn> foundLineColumns()
{
    QList<controls::DBGridColumn> columns{
        {u"גובה פתח"_s, u"MYHeight"_s, 4, -1},
        {u"רוחב פתח"_s, u"MyWidth"_s, 4, -1},
        {u"שם סדרה"_s, u"Name"_s, 8, -1},
        {u"סוג חלון"_s, u"Kind"_s, 6, -1},
    };
    for (const QString& field :
         {u"Mashkof_W"_s,   u"Mashkof_H"_s,    u"Kanaf_W"_s,      u"Kanaf_H"_s,
          u"Glass_W"_s,     u"Glass_H"_s,      u"Reshet_W"_s,     u"Reshet_H"_s,
          u"Mashof_Kind"_s, u"Mahkof_Color"_s, u"Mahkof_Count"_s, u"Kanaf_Kind"_s,
          u"Kanaf_Color"_s, u"Kanaf_Count"_s,  u"Glass_Kind"_s,   u"Glass_Color"_s,
          u"Glass_Count"_s, u"Reshet_Kind"_s,  u"Reshet_Color"_s, u"Reshet_Count"_s})
        columns.append({field, field, 0, -1});
    return columns;
}

QPushButton* iconButton(const QString& name, const QString& caption, const QString& icon,
                        const QRect& place, QWidget* parent)
{
    auto* button = new controls::PictureButton(name, caption, controls::sharpIcon(icon), parent);
    button->setFont(controls::boldFontOf(u"Arial"_s, 11.25));
    button->setGeometry(place);
    // The buttons are not default buttons, because Enter in a grid must not choose an order.
    button->setAutoDefault(false);
    return button;
}

} // namespace

FormFindOrder::FormFindOrder(LoadOrder load, QWidget* parent)
    : QDialog(parent), load_(std::move(load)), DBGrid1(new controls::DBGrid(u"DBGrid1"_s, this)),
      DataOrders(new controls::DataControl(u"DataOrders"_s, this)),
      DBGrid2(new controls::DBGrid(u"DBGrid2"_s, this)),
      DataCuts(new controls::DataControl(u"DataCuts"_s, this)),
      CmdPic(iconButton(u"CmdPic"_s, u"טען הזמנה"_s, u":/zomrel/icons/accept.png"_s,
                        controls::twipsRect(4680, 7830, 1335, 615), this)),
      CmdClose(iconButton(u"CmdClose"_s, u"סגור"_s, u":/zomrel/icons/close.png"_s,
                          controls::twipsRect(2610, 7800, 1335, 615), this)),
      TimerGetOrder(new QTimer(this))
{
    setObjectName(u"FormFindOrder"_s);
    setWindowTitle(u"חיפוש הזמנה"_s);
    TimerGetOrder->setObjectName(u"TimerGetOrder"_s);
    TimerGetOrder->setInterval(100);
    layOut();
    connectHandlers();
    SetGridFont(*DBGrid1);
    SetGridFont(*DBGrid2);
    GetOrders();
}

void FormFindOrder::layOut()
{
    setLayoutDirection(Qt::RightToLeft);
    setFixedSize(controls::pixels(9825), controls::pixels(8580));
    for (controls::DBGrid* grid : {DBGrid1, DBGrid2})
        grid->setFont(QFont(u"Arial"_s));
    DBGrid1->setCaption(u"הזמנות"_s);
    DBGrid1->setGeometry(controls::twipsRect(0, 90, 9585, 3855));
    DBGrid1->setColumns(orderColumns());
    DBGrid1->setDataSource(DataOrders);
    DataOrders->setGeometry(controls::twipsRect(0, 3960, 9585, 375));
    DataOrders->show();
    DBGrid2->setCaption(u"פריטים בהזמנה"_s);
    DBGrid2->setGeometry(controls::twipsRect(1320, 4350, 6105, 2895));
    DBGrid2->setColumns(foundLineColumns());
    DBGrid2->setDataSource(DataCuts);
    DataCuts->setGeometry(controls::twipsRect(1320, 7290, 6105, 375));
    DataCuts->show();
    controls::fitIntoRoom(*this, controls::roomOnScreen(*this), {CmdPic, CmdClose});
    controls::centreOnScreen(*this);
}

void FormFindOrder::connectHandlers()
{
    runtime::on(DataOrders, &controls::DataControl::Validate, this,
                [this] { DataOrders_Validate(); });
    runtime::on(TimerGetOrder, &QTimer::timeout, this, [this] { TimerGetOrder_Timer(); });
    runtime::on(DBGrid1, &controls::DBGrid::DblClick, this, [this] { Sel_Order(); });
    runtime::on(CmdPic, &QPushButton::clicked, this, [this] { Sel_Order(); });
    runtime::on(CmdClose, &QPushButton::clicked, this, [this] { CmdClose_Click(); });
}

void FormFindOrder::GetOrders()
{
    Module1::SqlText = u"SELECT * FROM Orders Order by Number"_s;
    DataOrders->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
    if (DataOrders->Recordset().RecordCount() >= 1)
        DataOrders->Recordset().MoveLast();
    bindLinesOfCurrent();
}

void FormFindOrder::Get_Order()
{
    if (!isVisible())
        return;
    bindLinesOfCurrent();
    DBGrid2->setCaption(u"שורות בהזמנה : "_s + runtime::toText(currentNumber()));
}

void FormFindOrder::Sel_Order()
{
    Module1::CurrentOrderNum = runtime::toInt16(currentNumber());
    load_(Module1::CurrentOrderNum);
    accept();
}

void FormFindOrder::CmdClose_Click()
{
    reject();
}

void FormFindOrder::DataOrders_Validate()
{
    if (!TimerGetOrder->isActive())
        TimerGetOrder->start();
}

void FormFindOrder::TimerGetOrder_Timer()
{
    Get_Order();
    TimerGetOrder->stop();
}

QVariant FormFindOrder::currentNumber() const
{
    return DataOrders->Recordset().Fields(u"Number"_s).Value();
}

void FormFindOrder::bindLinesOfCurrent()
{
    Module1::SqlText = linesQuery(runtime::toText(currentNumber()));
    DataCuts->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
}

void findOrder(LoadOrder load)
{
    FormFindOrder(std::move(load), controls::mainWindow()).exec();
}

} // namespace orders

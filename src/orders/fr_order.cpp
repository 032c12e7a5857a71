#include "orders/fr_order.h"

#include "base/input_boxes.h"
#include "base/module1.h"
#include "calculation/form_select_serial.h"
#include "calculation/opening_panel.h"
#include "orders/numbering.h"
#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "orders/order_lines.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_combo.h"
#include "platform/controls/db_grid.h"
#include "platform/controls/scroll_part.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"
#include "store/store_access.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

/// Sets the font size of every QLabel on the form to 13 points. Classes derived from QLabel are
/// skipped.
void SetLabelsFontSize(QWidget& form)
{
    for (QLabel* label : form.findChildren<QLabel*>()) {
        if (label->metaObject() != &QLabel::staticMetaObject)
            continue;
        QFont font = label->font();
        font.setPointSize(13);
        label->setFont(font);
    }
}

using CustomerBox = std::pair<QString, QLineEdit*>;

/// Returns the names of the customer fields with their input boxes, in the order in which the
/// fields are read and written.
std::array<CustomerBox, 3> customerBoxes(const OrderHead& head)
{
    return {CustomerBox{u"CustomerName"_s, head.TextCustomerName},
            CustomerBox{u"CustomerAddress"_s, head.TextCustomerAddress},
            CustomerBox{u"CustomerTel"_s, head.TextCustomerTel}};
}

} // namespace

FrOrder::FrOrder()
    : ChildForm(u"FrOrder"_s, u"הזמנות"_s), DataCut(new controls::DataControl(u"DataCut"_s, this)),
      DataAllCuts(new controls::DataControl(u"DataAllCuts"_s, this)),
      DataOrder(new controls::DataControl(u"DataOrder"_s, this)),
      DataMDI(new controls::DataControl(u"DataMDI"_s, this)), Timer1(new QTimer(this)),
      head_(new OrderHead(this)), opening_(new calculation::OpeningPanel(this)),
      DBGrid1(makeLinesGrid(DataAllCuts, this)),
      commands_(new OrderCommands(opening_->commandRow(), this))
{
    Timer1->setObjectName(u"Timer1"_s);
    Timer1->setInterval(200);
    layOut();
    setTabOrders();
    connectHandlers();
    Form_Load();
    // The timer that moves the grid to the last line starts after loading, so that its first
    // interval does not include the loading time.
    Timer1->start();
}

void FrOrder::Form_Load()
{
    Module1::SelectedSerialNum = 0;
    opening_->bindKindsAndColours();
    DataCut->setRecordset(store::OpenMyDataBase()->OpenRecordset(u"Cuts"_s, dao::dbOpenTable));
    GetOrderDetails(Module1::CurrentOrderNum);
    SetLabelsFontSize(*this);
    SetGridFont(*DBGrid1);
}

/// Puts all controls except the two rows of buttons into a scroll area, which scrolls if the window
/// is small.
void FrOrder::layOut()
{
    setLayoutDirection(Qt::RightToLeft);
    auto* body = new QHBoxLayout;
    body->setSpacing(OrderCommands::columnGap);
    body->addWidget(opening_, OrderCommands::openingShare);
    body->addWidget(DBGrid1, OrderCommands::linesShare);
    auto* upper = new QWidget;
    auto* rows = new QVBoxLayout(upper);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(head_);
    rows->addLayout(body, 1);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(8, 6, 8, 6);
    whole->addWidget(new controls::ScrollPart(upper, this), 1);
    whole->addWidget(commands_);
}

void FrOrder::setTabOrders()
{
    QList<QWidget*> inOrder{opening_->CmdPicSerial};
    for (int i = 0; i < 4; ++i)
        inOrder.append(opening_->TextNum[i]);
    inOrder.append({opening_->CmdAdd, opening_->CmdOK, opening_->CmdClear1});
    for (int part = 0; part < 4; ++part)
        inOrder.append({opening_->DBComboKind[part], opening_->DBComboColor[part]});
    inOrder.append({DBGrid1, commands_->CmdView, commands_->CmdDel, commands_->CmdDelAll,
                    commands_->CmdPrint, commands_->CmdFindOrder, commands_->CmdOpenOrder,
                    commands_->CmdCloseOrder, commands_->Command2, head_->TextCustomerName,
                    head_->TextCustomerAddress, head_->TextCustomerTel, opening_->TextNum[4],
                    opening_->TextNum[5]});
    for (qsizetype i = 1; i < inOrder.size(); ++i)
        setTabOrder(inOrder[i - 1], inOrder[i]);
}

void FrOrder::connectHandlers()
{
    runtime::on(DataAllCuts, &controls::DataControl::Validate, this,
                [this] { DataAllCuts_Validate(); });
    runtime::on(Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
    runtime::on(opening_, &calculation::OpeningPanel::lineAdded, this, [this] { lineAdded(); });
    runtime::on(opening_, &calculation::OpeningPanel::seriesRequested, this,
                [] { calculation::formSelectSerial().Show(); });
    connectCommands();
    connectKeys();
}

void FrOrder::GetOrderDetails(std::int16_t Number)
{
    for (const auto& [field, box] : customerBoxes(head()))
        box->clear();
    Module1::SqlText = orderQuery(Number);
    DataOrder->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
    dao::Recordset& order = DataOrder->Recordset();
    if (order.RecordCount() < 1)
        return;
    head().LabelOrderNum->setText(QString::number(Module1::CurrentOrderNum));
    head().LabelOrderDate->setText(runtime::toText(order.Fields(u"Order_Date"_s).Value()));
    for (const auto& [field, box] : customerBoxes(head())) {
        const QVariant stored = order.Fields(field).Value();
        if (!runtime::isNull(stored))
            box->setText(runtime::toText(stored));
    }
    GetOrderAllCuts(Number);
}

void FrOrder::GetOrderAllCuts(std::int16_t Number)
{
    commands().CmdOpenOrder->setEnabled(false);
    bindLines(Number);
    enableTimer1();
}

void FrOrder::bindLines(std::int16_t Number)
{
    Module1::SqlText = linesQuery(QString::number(Number));
    DataAllCuts->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
}

void FrOrder::SaveOrderDetails(bool CloseIt)
{
    Module1::SqlText = orderQuery(Module1::CurrentOrderNum);
    DataOrder->setRecordset(
        store::OpenMyDataBase()->OpenRecordset(Module1::SqlText, dao::dbOpenDynaset));
    dao::Recordset& order = DataOrder->Recordset();
    if (order.RecordCount() > 0) {
        order.Edit();
        for (const auto& [field, box] : customerBoxes(head()))
            order.Fields(field).SetValue(box->text().isEmpty() ? QVariant() : box->text());
        if (CloseIt)
            order.Fields(u"Open_Close"_s).SetValue(1);
        order.Update();
    }
    DataOrder->Database().Close();
}

void FrOrder::DataAllCuts_Validate()
{
    head().LabelLinesInOrder->setText(QString::number(DataAllCuts->Recordset().RecordCount()));
}

void FrOrder::lineAdded()
{
    DataAllCuts->Refresh();
    SaveOrderDetails(false);
    enableTimer1();
}

void FrOrder::Timer1_Timer()
{
    dao::Recordset& lines = DataAllCuts->Recordset();
    if (lines.RecordCount() >= 1)
        lines.MoveLast();
    Timer1->stop();
}

/// Starts the timer that moves the grid to the last line. Does not restart the timer if it is
/// already running.
void FrOrder::enableTimer1()
{
    if (!Timer1->isActive())
        Timer1->start();
}

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

} // namespace orders

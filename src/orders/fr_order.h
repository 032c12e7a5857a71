#pragma once

#include "platform/controls/form.h"

#include <cstdint>

class QBoxLayout;
class QTimer;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace dao {
class Recordset;
}

namespace calculation {
class OpeningPanel;
}

namespace orders {

class OrderCommands;
class OrderHead;

/// The screen on which all work on an order happens: the order's head, the opening that is being
/// entered, the lines, the commands. The order on it is known to all by Module1::CurrentOrderNum.
class FrOrder : public controls::ChildForm
{
    Q_OBJECT

public:
    /// Loads the form: binds its data and shows the current order. Raises what the store raises.
    FrOrder();

    /// Puts the order on the form. An order that has no row leaves the form as it was.
    void GetOrderDetails(std::int16_t Number);
    /// Binds the grid to the order's lines and has the timer bring it to the last one.
    void GetOrderAllCuts(std::int16_t Number);
    /// Writes the customer's boxes to the current order, an empty box as Null, and marks the order
    /// closed if told so.
    void SaveOrderDetails(bool CloseIt);
    void CmdFindOrder_Click();

    /// Binds the grid to the order's lines and nothing else.
    void bindLines(std::int16_t Number);

    OrderHead& head() const { return *head_; }
    calculation::OpeningPanel& opening() const { return *opening_; }
    OrderCommands& commands() const { return *commands_; }

protected:
    bool opensMaximised() const override { return true; }

private:
    void layOut();
    void setTabOrders();
    void connectHandlers();
    void connectCommands();
    void Form_Load();

    void CmdView_Click();
    void CmdDel_Click();
    void CmdDelAll_Click();
    void CmdPrint_Click();
    void CmdOpenOrder_Click();
    void CmdCloseOrder_Click();
    void Command2_Click();
    void DataAllCuts_Validate();
    void Timer1_Timer();
    void lineAdded();

    void enableTimer1();
    void deleteLines(dao::Recordset& lines, int count);
    void renumberLines();
    void openReport();

    controls::DataControl* DataCut;
    controls::DataControl* DataAllCuts;
    controls::DataControl* DataOrder;
    /// The table of orders is the main window's business; nothing here touches this one.
    controls::DataControl* DataMDI;
    QTimer* Timer1;
    OrderHead* head_;
    calculation::OpeningPanel* opening_;
    controls::DBGrid* DBGrid1;
    OrderCommands* commands_;
};

} // namespace orders

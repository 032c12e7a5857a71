#pragma once

#include "platform/controls/form.h"

#include <cstdint>

class QMenu;
class QPoint;
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

/// The order form. It shows the order's number and customer, the opening that is being entered, the
/// order's lines and the buttons. Module1::CurrentOrderNum is the number of the displayed order.
class FrOrder : public controls::ChildForm
{
    Q_OBJECT

public:
    /// Binds the data controls of the form and shows the current order. Throws any store error.
    FrOrder();

    /// Loads the order with this number into the form. If no such order is stored, the customer
    /// boxes are cleared and the rest of the form stays unchanged.
    void GetOrderDetails(std::int16_t Number);
    /// Binds the grid to the order's lines and starts Timer1, which moves the grid to the last
    /// line.
    void GetOrderAllCuts(std::int16_t Number);
    /// Writes the customer boxes to the row of the current order. An empty box is stored as Null.
    /// If CloseIt is true, the order is marked closed.
    void SaveOrderDetails(bool CloseIt);
    void CmdFindOrder_Click();
    /// Presses the print button.
    void pressPrint();
    /// Moves the focus to the next or the previous part of the form. The parts are the opening, the
    /// lines and the customer. `by` is 1 for the next part and -1 for the previous part.
    void goToPart(int by);

    /// Binds the grid to the order's lines. Unlike GetOrderAllCuts, does not move the grid to the
    /// last line.
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
    void connectKeys();
    void connectGridKeys();
    void showGridMenu(const QPoint& place);
    void addRemarks(QMenu& menu);
    void addMoves(QMenu& menu);
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
    /// An unused data control, which is never bound to a recordset. The main window has another
    /// data control with the name DataMDI, which is bound to the table Orders.
    controls::DataControl* DataMDI;
    QTimer* Timer1;
    OrderHead* head_;
    calculation::OpeningPanel* opening_;
    controls::DBGrid* DBGrid1;
    OrderCommands* commands_;
};

/// Returns the order form. The first call creates the form and shows it in the main window.
FrOrder& frOrder();

} // namespace orders

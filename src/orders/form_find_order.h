#pragma once

#include <QDialog>

#include <cstdint>
#include <functional>

class QPushButton;
class QTimer;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace orders {

/// Loads the order with this number into the order form.
using LoadOrder = std::function<void(std::int16_t number)>;

/// The modal search form. It lists all orders, newest first, and loads the chosen one. The instance
/// exists only while it is shown and never writes to the store.
class FormFindOrder : public QDialog
{
    Q_OBJECT

public:
    /// Loads the form and lists the orders. Throws NoCurrentRecord (3021) if there is no order, and
    /// any store error.
    explicit FormFindOrder(LoadOrder load, QWidget* parent = nullptr);

private:
    void layOut();
    void connectHandlers();
    /// Fills both data controls. The current row is the order with the highest number.
    void GetOrders();
    /// Shows the lines of the current order.
    void Get_Order();
    /// Loads the current order into the order form and closes the search form.
    void Sel_Order();
    void CmdClose_Click();
    void DataOrders_Validate();
    void TimerGetOrder_Timer();
    /// Returns the number of the current order.
    QVariant currentNumber() const;
    void bindLinesOfCurrent();

    LoadOrder load_;
    controls::DBGrid* DBGrid1;
    controls::DataControl* DataOrders;
    controls::DBGrid* DBGrid2;
    controls::DataControl* DataCuts;
    QPushButton* CmdPic;
    QPushButton* CmdClose;
    /// Delays the update of the lines, because the data control reports a row change before it
    /// happens. A burst of moves causes one update.
    QTimer* TimerGetOrder;
};

/// Runs the search form as a modal dialog. Throws the errors of FormFindOrder.
void findOrder(LoadOrder load);

} // namespace orders

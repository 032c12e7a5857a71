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

/// A function that loads the order with this number into the order form.
using LoadOrder = std::function<void(std::int16_t number)>;

/// The modal form in which the user searches for an order. It lists all orders by ascending number
/// and starts at the newest one. It loads the chosen order into the order form. The instance exists
/// only while the form is shown. The form never writes to the store.
class FormFindOrder : public QDialog
{
    Q_OBJECT

public:
    /// Creates the search form and lists the orders. Throws NoCurrentRecord (3021) if there is no
    /// order, and any store error.
    explicit FormFindOrder(LoadOrder load, QWidget* parent = nullptr);

private:
    void layOut();
    void connectHandlers();
    /// Fills the data controls of the orders and of the lines. Afterwards the current row is the
    /// order with the highest number.
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
    /// The timer delays the update of the grid of lines when the current order changes. The data
    /// control reports a row change before the row has changed. Several quick row changes cause
    /// only one update.
    QTimer* TimerGetOrder;
};

/// Runs the search form as a modal dialog. Throws the errors of FormFindOrder.
void findOrder(LoadOrder load);

} // namespace orders

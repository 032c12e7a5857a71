#pragma once

#include <QDialog>

class QPushButton;
class QTimer;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace orders {

/// The modal search form. It lists all orders, newest first, and loads the chosen one into the
/// order form. The instance exists only while it is shown and never writes to the store.
class FormFindOrder : public QDialog
{
    Q_OBJECT

public:
    /// Loads the form and lists the orders. Throws NoCurrentRecord (3021) if there is no order, and
    /// any store error.
    explicit FormFindOrder(QWidget* parent = nullptr);

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

} // namespace orders

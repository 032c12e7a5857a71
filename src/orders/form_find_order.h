#pragma once

#include <QDialog>

class QPushButton;
class QTimer;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace orders {

/// The modal screen on which all orders are browsed, the newest first, and one is taken onto the
/// order form. It lives only while it is shown and writes nothing to the store.
class FormFindOrder : public QDialog
{
    Q_OBJECT

public:
    /// Loads the form: lists the orders. Raises what the store raises, 3021 where there is no
    /// order.
    explicit FormFindOrder(QWidget* parent = nullptr);

private:
    void layOut();
    void connectHandlers();
    /// Fills both data controls; the cursor starts on the highest number.
    void GetOrders();
    /// Shows the lines of the order under the cursor.
    void Get_Order();
    /// Takes the order under the cursor and leaves.
    void Sel_Order();
    void CmdClose_Click();
    void DataOrders_Validate();
    void TimerGetOrder_Timer();
    /// The number of the order under the cursor.
    QVariant currentNumber() const;
    void bindLinesOfCurrent();

    controls::DBGrid* DBGrid1;
    controls::DataControl* DataOrders;
    controls::DBGrid* DBGrid2;
    controls::DataControl* DataCuts;
    QPushButton* CmdPic;
    QPushButton* CmdClose;
    /// A change of row is told before it happens: the lines follow a moment later, and only once
    /// for a burst of moves.
    QTimer* TimerGetOrder;
};

} // namespace orders

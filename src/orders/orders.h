#pragma once

namespace controls {
class DataControl;
}

/// What the main window asks of the orders.
namespace orders {

class FrOrder;

/// The one order form. The first touch loads it and makes it visible in the frame.
FrOrder& frOrder();

/// The toolbar's order command: continues the last order while it is open, else adds the next, puts
/// it on the order form and shows the form. Closes the database behind dataMDI.
void openOrderLongForm(controls::DataControl& dataMDI);

/// The menu's command to take in an order: settles the number alike and shows the form as it
/// stands. A form that was loaded before keeps showing what it showed, and the database behind
/// dataMDI stays open.
void openOrderShortForm(controls::DataControl& dataMDI);

/// Shows the search form and waits until it is gone.
void findOrder();

} // namespace orders

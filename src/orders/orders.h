#pragma once

namespace controls {
class DataControl;
}

/// The functions of the library `orders` that the main window calls.
namespace orders {

/// Executes the order command of the toolbar. Makes the last order the current order if it is not
/// closed yet, or else adds an order (see continueOrAddOrder). Then shows the current order on the
/// order form, and closes the database of dataMDI, the data control of the main window.
void openOrderLongForm(controls::DataControl& dataMDI);

/// Executes the menu command for a new order. Makes the last order the current order if it is not
/// closed yet, or else adds an order (see continueOrAddOrder). Then shows the order form. An order
/// form that is already loaded keeps its contents. The database of dataMDI, the data control of the
/// main window, stays open.
void openOrderShortForm(controls::DataControl& dataMDI);

/// Shows the search form as a modal dialog and loads the chosen order into the order form.
void findOrder();

} // namespace orders

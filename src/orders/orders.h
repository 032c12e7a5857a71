#pragma once

namespace controls {
class DataControl;
}

/// The functions of the order room that the main window calls.
namespace orders {

class FrOrder;

/// Returns the order form. The first call creates the form and shows it in the frame.
FrOrder& frOrder();

/// Runs the toolbar's order command. Applies the new-order rule, shows the current order on the
/// order form, and closes the database behind dataMDI.
void openOrderLongForm(controls::DataControl& dataMDI);

/// Runs the menu command for a new order. Applies the new-order rule and shows the order form. A
/// form that is already loaded keeps its contents. The database behind dataMDI stays open.
void openOrderShortForm(controls::DataControl& dataMDI);

/// Runs the search form as a modal dialog.
void findOrder();

} // namespace orders

#pragma once

namespace controls {
class DataControl;
}

/// The functions of the order room that the main window calls.
namespace orders {

/// Runs the toolbar's order command. Applies the new-order rule, shows the current order on the
/// order form, and closes the database behind dataMDI.
void openOrderLongForm(controls::DataControl& dataMDI);

/// Runs the menu command for a new order. Applies the new-order rule and shows the order form. A
/// form that is already loaded keeps its contents. The database behind dataMDI stays open.
void openOrderShortForm(controls::DataControl& dataMDI);

/// Runs the search form as a modal dialog. The chosen order is loaded into the order form.
void findOrder();

} // namespace orders

#pragma once

#include "journeys/program.h"

#include <functional>

namespace journeys {

/// The numbers of the orders of the week.
struct Week
{
    int first = 0;
    int second = 0;
    int third = 0;
    int next = 0; ///< The order that is open and empty at the end.
};

/// Starts the program, works a week in it and ends it. A series and some kinds and colours are
/// entered, three orders are entered and closed, the first order is found and changed, and lines
/// are deleted. `betweenOrders` is called while no order of the week is open. Aborts the test
/// process if the program shows anything unexpected.
Week workAWeek(Program& program, const std::function<void()>& betweenOrders);

/// Compares every row that the week has written with its expected values. Days are ISO texts.
void compareWeek(Program& program, const Week& week, const QStringList& days);

/// Removes the week's rows from the store and restores the entries that it changed in the lists.
void removeWeek(Program& program, const Week& week);

} // namespace journeys

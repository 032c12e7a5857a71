#pragma once

#include "journeys/program.h"

#include <functional>

namespace journeys {

/// The numbers that the week's orders got.
struct Week
{
    int first = 0;
    int second = 0;
    int third = 0;
    int next = 0; ///< The order that stands open and empty at the end.
};

/// A week's work in the program, which is started and ended here: a series and some kinds and
/// colours entered, three orders taken in and closed, the first one found again and changed, lines
/// deleted. `betweenOrders` runs while no order of the week is open. Fails hard where the program
/// shows something else than it should.
Week workAWeek(Program& program, const std::function<void()>& betweenOrders);

/// Compares every row that the week has written with what it has to be. Days are ISO texts.
void compareWeek(Program& program, const Week& week, const QStringList& days);

/// Takes the week's own rows out of the store again and puts back what it changed in the lists.
void removeWeek(Program& program, const Week& week);

} // namespace journeys

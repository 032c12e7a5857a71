#pragma once

#include "calculation/line_marks.h"

#include <random>
#include <vector>

namespace calculationtest {

/// A line with what it was computed from, so that one input can be replaced by a slip.
struct PlannedLine
{
    cuts::Series series;
    bool isDoor = false;
    bool isMonoblock = false;
    cuts::Size opening;
    double doorThickness = 4;
    double widthDeduct = 0;
    double heightDeduct = 18;

    cuts::LineFigures figures() const;
};

/// Invents orders as a workshop has them, and slips in them. Equal seeds give equal orders on all
/// machines.
class Planner
{
public:
    explicit Planner(unsigned seed) : random_(seed) {}

    /// Returns the lines of one order: four to thirty sound openings of a building.
    std::vector<PlannedLine> order();
    /// Changes one input of the line as a slip of the hand does.
    PlannedLine withSlip(PlannedLine line);
    /// Returns a number from `least` to `most`.
    int number(int least, int most);

private:
    PlannedLine window();
    PlannedLine door();

    std::mt19937 random_;
};

} // namespace calculationtest

#pragma once

class QWidget;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace orders {

/// Makes DBGrid1, the grid over an order's lines. It is for reading and for choosing the current
/// line.
controls::DBGrid* makeLinesGrid(controls::DataControl* lines, QWidget* parent);

} // namespace orders

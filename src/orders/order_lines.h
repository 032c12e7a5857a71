#pragma once

class QWidget;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace orders {

/// Creates DBGrid1, the read-only grid of an order's lines. Its current row is the order's current
/// line.
controls::DBGrid* makeLinesGrid(controls::DataControl* lines, QWidget* parent);

} // namespace orders

#pragma once

#include <QString>

class QWidget;

namespace controls {
class DataControl;
class DBGrid;
} // namespace controls

namespace orders {

/// Returns the text of the query that selects all lines of an order in the sort order of the grids.
QString linesQuery(const QString& number);

/// Creates DBGrid1, the read-only grid of an order's lines. Its current row is the order's current
/// line.
controls::DBGrid* makeLinesGrid(controls::DataControl* lines, QWidget* parent);

} // namespace orders

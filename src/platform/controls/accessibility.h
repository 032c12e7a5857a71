#pragma once

namespace controls {

/// Replaces Qt's descriptions of grids and lists for screen readers by GridInterface and
/// ListInterface. Must be called once, before the first window is shown.
void installAccessibility();

} // namespace controls

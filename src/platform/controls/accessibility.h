#pragma once

namespace controls {

/// Replaces Qt's screen-reader interfaces of grids and combo boxes by GridInterface and
/// ListInterface. Must be called once, before the first window is shown.
void installAccessibility();

} // namespace controls

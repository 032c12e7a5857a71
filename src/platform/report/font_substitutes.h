#pragma once

namespace report {

/// Registers substitute font families with Hebrew letters. They are used if the system lacks a font
/// that the forms and documents name, or if that font has no Hebrew letters.
void substituteFonts();

} // namespace report

#pragma once

class QString;

namespace report {

/// Loads all fonts of the folder for this process and returns their number. Other files, a missing
/// folder and a folder that others can write to are ignored; see runtime::isTrustedFolder.
int loadFonts(const QString& folder);

/// Loads the fonts in the folder `fonts` beside the program, which a portable folder and the
/// Windows program contain.
void loadDeliveredFonts();

/// Registers substitute font families with Hebrew letters. They are used if the system lacks a font
/// that the forms and documents name, or if that font has no Hebrew letters.
void substituteFonts();

} // namespace report

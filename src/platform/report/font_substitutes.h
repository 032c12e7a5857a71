#pragma once

class QString;

namespace report {

/// Loads all fonts of the folder for this process and returns the number of loaded fonts. Files
/// that are not fonts are ignored. A missing folder and a folder that other users can write to are
/// ignored as well; see runtime::isTrustedFolder.
int loadFonts(const QString& folder);

/// Loads the fonts from the folder `fonts` beside the program file. A portable folder and the
/// Windows version of the program contain such a folder.
void loadDeliveredFonts();

/// Registers substitute font families with Hebrew letters. A substitute is used if the system lacks
/// a font that the forms and documents name, or if that font has no Hebrew letters.
void substituteFonts();

} // namespace report

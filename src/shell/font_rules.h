#pragma once

namespace shell {

/// Makes the font library use the program's own short rules instead of the system's, which consist
/// of about 40 files and take a third of the start. Fonts in the usual folders of the system and
/// of the user can still be used. Call it before the first font is used. Returns false and changes
/// nothing if an environment variable names other rules, or if the toolkit does not use the library
/// fontconfig.
bool useFontRules();

} // namespace shell

#pragma once

namespace shell {

/// Makes the library fontconfig use the program's own short rules instead of the system's rules,
/// because the system's rules are about 40 files and reading them takes a third of the start time.
/// Fonts in the usual folders of the system and of the user can still be used. Must be called
/// before the first font is used. Returns false and changes nothing if an environment variable
/// names other rules, or if the toolkit does not use fontconfig.
bool useFontRules();

} // namespace shell

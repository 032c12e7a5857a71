#pragma once

namespace storetools {

enum class Language { English, Hebrew };

/// Returns the language of the messages. It is English until setLanguage() chooses another one, so
/// that a program that only uses this library is not affected by the user's locale.
Language language();
void setLanguage(Language language);

/// Returns Hebrew if the user's language is Hebrew, as the environment or the system's settings
/// say, and otherwise English.
Language usersLanguage();

} // namespace storetools

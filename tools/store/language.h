#pragma once

#include <QString>

namespace storetools {

/// Returns true if the user's language is Hebrew, as the environment or the system's settings say.
bool speaksHebrew();

/// Returns the message in the user's language: Hebrew in a Hebrew locale, English in all
/// others.
QString inUsersLanguage(const QString& english, const QString& hebrew);

} // namespace storetools

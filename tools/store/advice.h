#pragma once

#include <QString>

namespace storetools {

/// Returns a Hebrew sentence that says what happened and what to do about an error with this
/// number, or an empty text for an error without advice. The descriptions of errors are English.
QString hebrewAdvice(int errorNumber);

} // namespace storetools

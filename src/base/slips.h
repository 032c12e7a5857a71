#pragma once

#include <QString>

class QLineEdit;

namespace base {

/// Returns a Hebrew sentence that says what is wrong with the text of a measure's box, or an empty
/// text for plain digits and for an empty box, which gets its default when it is left.
QString slipIn(const QString& text);

/// Tints the box and explains why in its tool tip whenever its text has a slip. The text is not
/// changed and no key is refused.
void showSlips(QLineEdit& box);

} // namespace base

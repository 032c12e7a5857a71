#pragma once

#include <QString>

class QLineEdit;

namespace base {

/// Returns a Hebrew sentence that says what is wrong with the text of a measure's input box.
/// Returns an empty text if the input box contains only digits or is empty. An empty box is no
/// mistake, because it gets its default text when the user leaves it.
QString slipIn(const QString& text);

/// Colours the box and explains the mistake in a tool tip while the text of the box contains a
/// mistake. The text is not changed, and all keys are accepted.
void showSlips(QLineEdit& box);

} // namespace base

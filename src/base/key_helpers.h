#pragma once

#include <cstdint>

class QKeyEvent;
class QLineEdit;

/// The keyboard helpers of the input boxes.
namespace Module1 {

/// The key codes that the keyboard helpers distinguish.
enum KeyCode : std::int32_t {
    KeyOther = 0, ///< Any key that the helpers do not distinguish.
    KeyBackspace = 8,
    KeyReturn = 13,
    KeyUp = 38,
    KeyDown = 40,
    KeyDelete = 46,
    KeyAdd = 107,      ///< Plus key of the numeric keypad.
    KeySubtract = 109, ///< Minus key of the numeric keypad.
    KeyMinus = 189,    ///< Minus key of the main keyboard.
};

/// Returns the key code of a key event.
std::int32_t keyCodeOf(const QKeyEvent& event);

/// Moves the focus by one tab stop: forward for Enter and Down, back for Up. Always selects the
/// text of the box that gets the focus; the argument `selectAll` is ignored. Accepts every key and
/// reports no error.
void KeyNavigate(QLineEdit& box, std::int32_t keyCode, bool selectAll);
/// Filters the keys of a sign box. Enter and the arrow keys Down and Up move the focus like
/// KeyNavigate, and the text is selected only if `selectAll` is true. Backspace, Delete and the
/// plus and minus keys are passed on. Any other key makes the box read-only until it is released,
/// so that the key types nothing.
void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll);
void SelectAllText(QLineEdit& box);

} // namespace Module1

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
/// Moves the focus like KeyNavigate, and selects the text only if `selectAll` is true. Makes the
/// box read-only for every other key that is not needed to enter a sign.
void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll);
void SelectAllText(QLineEdit& box);

} // namespace Module1

#pragma once

#include <cstdint>

class QKeyEvent;
class QLineEdit;

/// The keyboard helpers of the input boxes.
namespace Module1 {

/// The key codes that KeyNavigate and KeySignFilter distinguish.
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

/// Moves the focus to the next tab stop on Enter or Down and to the previous tab stop on Up. Always
/// selects the text of the box that gets the focus; the argument `selectAll` is ignored. Other keys
/// have no effect, and no error is reported.
void KeyNavigate(QLineEdit& box, std::int32_t keyCode, bool selectAll);
/// Handles a key of a sign box. Enter and Down move the focus to the next tab stop, and Up moves it
/// to the previous one. The text of the box that gets the focus is selected only if `selectAll` is
/// true. Backspace, Delete, the minus key and the plus and minus keys of the numeric keypad have no
/// effect here, so that the box itself handles them. Any other key makes the box read-only until
/// the key is released, so that the key types nothing.
void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll);
void SelectAllText(QLineEdit& box);

} // namespace Module1

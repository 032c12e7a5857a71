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

/// Handles a key of an input box. Enter and Down move the focus to the next tab stop, and Up moves
/// it to the previous tab stop. The text of the box that gets the focus is selected, whatever the
/// value of `selectAll` is. Other keys have no effect.
void KeyNavigate(QLineEdit& box, std::int32_t keyCode, bool selectAll);
/// Handles a key of a sign box (the input box for plus or minus). Enter and Down move the focus to
/// the next tab stop, and Up moves it to the previous tab stop. If `selectAll` is true, the text of
/// the box that gets the focus is selected. Backspace, Delete, the minus key and the plus and minus
/// keys of the numeric keypad have no effect in this function, so that they edit the box as usual.
/// Any other key types nothing: it makes the box read-only until the key is released.
void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll);
void SelectAllText(QLineEdit& box);

} // namespace Module1

#include "base/key_helpers.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace Module1 {

namespace {

/// Sends a Tab key press to the box, or Shift+Tab if `back` is true. If `selectReached` is true,
/// selects the text of the box that gets the focus.
void goOneTabStop(QLineEdit& box, bool back, bool selectReached)
{
    QKeyEvent tab(QEvent::KeyPress, back ? Qt::Key_Backtab : Qt::Key_Tab,
                  back ? Qt::ShiftModifier : Qt::NoModifier);
    QApplication::sendEvent(&box, &tab);
    if (!selectReached)
        return;
    QWidget* reached = box.window()->focusWidget();
    if (auto* combo = qobject_cast<QComboBox*>(reached); combo != nullptr && combo->isEditable())
        combo->lineEdit()->selectAll();
    else if (auto* edit = qobject_cast<QLineEdit*>(reached))
        edit->selectAll();
}

} // namespace

std::int32_t keyCodeOf(const QKeyEvent& event)
{
    const bool keypad = event.modifiers().testFlag(Qt::KeypadModifier);
    switch (event.key()) {
    case Qt::Key_Backspace:
        return KeyBackspace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyReturn;
    case Qt::Key_Up:
        return KeyUp;
    case Qt::Key_Down:
        return KeyDown;
    case Qt::Key_Delete:
        return KeyDelete;
    case Qt::Key_Plus:
        return keypad ? KeyAdd : KeyOther;
    case Qt::Key_Minus:
        return keypad ? KeySubtract : KeyMinus;
    default:
        return KeyOther;
    }
}

void KeyNavigate(QLineEdit& box, std::int32_t keyCode, bool /*selectAll*/)
{
    if (keyCode == KeyDown || keyCode == KeyReturn)
        goOneTabStop(box, false, true);
    else if (keyCode == KeyUp)
        goOneTabStop(box, true, true);
}

void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll)
{
    switch (keyCode) {
    case KeyBackspace:
    case KeyDelete:
    case KeyAdd:
    case KeySubtract:
    case KeyMinus:
        break;
    case KeyReturn:
    case KeyDown:
        goOneTabStop(box, false, selectAll);
        break;
    case KeyUp:
        goOneTabStop(box, true, selectAll);
        break;
    default:
        box.setReadOnly(true);
    }
}

void SelectAllText(QLineEdit& box)
{
    box.selectAll();
}

} // namespace Module1

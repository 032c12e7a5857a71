#pragma once

#include <QObject>
#include <QPointer>

class QToolBar;
class QToolButton;

namespace shell {

/// Keyboard control of the toolbar. F10 moves the focus to the first button, and the left and right
/// arrow keys move it between buttons. Enter and Space press a button, Down opens a button's menu,
/// and Escape returns the focus to the previous widget. Buttons never get the focus by Tab or
/// mouse, so closing a form cannot leave the focus on a command.
class ToolbarKeys : public QObject
{
    Q_OBJECT

public:
    /// The toolbar must already contain all of its buttons.
    explicit ToolbarKeys(QToolBar* toolbar);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QList<QToolButton*> buttons() const;
    void enter();
    bool handle(QToolButton& button, int key);
    void step(const QToolButton& from, int by);

    QToolBar* toolbar_;
    QPointer<QWidget> cameFrom_;
};

} // namespace shell

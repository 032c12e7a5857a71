#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QKeyEvent;
class QToolBar;
class QToolButton;
class QWidget;

namespace report {

/// Keyboard control of the toolbars of a window. F10 moves the focus to the first button, and the
/// left and right arrow keys move it between the buttons of a toolbar. Enter and Space press a
/// button, Down opens a button's menu, and Escape returns the focus to the previous widget. Buttons
/// never get the focus by mouse.
class ToolbarKeys : public QObject
{
    Q_OBJECT

public:
    /// Whether Tab reaches the buttons. In a window with forms it must not, so that closing a form
    /// cannot leave the focus on a command.
    enum class Tab { SkipsButtons, ReachesButtons };

    ToolbarKeys(QList<QToolBar*> toolbars, Tab tab);

    /// Takes the buttons that the toolbars have now. Must be called after buttons were added.
    void update();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void orderTabs();
    void enter();
    bool handle(QToolButton& button, const QKeyEvent& event);
    void step(const QToolButton& from, int by);
    void leave(QToolButton& button);

    QList<QToolBar*> toolbars_;
    Tab tab_;
    QPointer<QWidget> cameFrom_;
};

} // namespace report

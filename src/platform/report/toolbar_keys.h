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
///
/// A toolbar that is too narrow for its contents has a further button at its end, which shows the
/// rest in more rows. By key, it moves the focus to the first control that appears. The rest
/// disappears with Escape, which returns to the button, and when the focus leaves the toolbar.
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

    /// Hides the rest of a toolbar that a key has shown, and returns to the button that shows it.
    /// Returns false if there is none.
    bool collapse();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void orderTabs();
    void toggleRest(QToolButton& extension);
    bool isExpanded() const;
    QToolButton* takeExpanded();
    void collapseBehind(const QWidget* focused);
    void enter();
    bool handle(QToolButton& button, const QKeyEvent& event);
    void step(const QToolButton& from, int by);
    void leave(QToolButton& button);

    QList<QToolBar*> toolbars_;
    Tab tab_;
    QPointer<QWidget> cameFrom_;
    /// The button of the toolbar that a key has expanded. It is no QToolButton any more when the
    /// focus leaves a window that is being destroyed.
    QPointer<QWidget> expanded_;
};

} // namespace report

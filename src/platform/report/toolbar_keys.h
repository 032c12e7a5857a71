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
/// left and right arrow keys move the focus between the buttons of a toolbar. Enter and Space press
/// a button, Down opens the menu of a button, and Escape returns the focus to the previous widget.
/// Buttons never get the focus by mouse.
///
/// A toolbar that is too narrow for its contents has an extension button at its end, which shows
/// the controls that do not fit in additional rows. If a key presses the extension button, the
/// focus moves to the first control that appears. Escape hides the additional rows and returns the
/// focus to the extension button. The additional rows also disappear when the focus leaves the
/// toolbar.
class ToolbarKeys : public QObject
{
    Q_OBJECT

public:
    /// Selects whether Tab visits the toolbar buttons. In a window with forms, Tab must skip the
    /// buttons, because otherwise closing a form could leave the focus on a button.
    enum class Tab { SkipsButtons, ReachesButtons };

    ToolbarKeys(QList<QToolBar*> toolbars, Tab tab);

    /// Applies the keyboard control to the buttons that the toolbars contain now. Must be called
    /// after buttons have been added.
    void update();

    /// Hides the additional rows of a toolbar that a key has expanded, and returns the focus to the
    /// extension button. Returns false if no toolbar is expanded.
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
    /// The extension button of the toolbar that a key has expanded. The pointer type is QWidget,
    /// because the pointer is also used while the button is being destroyed. The button is then a
    /// QWidget, but no longer a QToolButton.
    QPointer<QWidget> expanded_;
};

} // namespace report

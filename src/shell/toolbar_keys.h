#pragma once

#include <QObject>
#include <QPointer>

class QToolBar;
class QToolButton;

namespace shell {

/// The toolbar by keyboard: F10 goes to its first button, the arrows to the left and right go from
/// button to button, Enter and Space press one, Down opens a button's menu, Escape goes back to
/// where the focus was. Buttons take no focus by Tab or by mouse, so that a form which goes away
/// never leaves the focus on a command.
class ToolbarKeys : public QObject
{
    Q_OBJECT

public:
    /// For a toolbar whose buttons are all in place.
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

#pragma once

#include <QObject>

namespace shell {

/// Hands the keyboard back when a dialog goes: a desktop without a window manager leaves it with no
/// window at all, and whoever works by keyboard would type into nothing.
///
/// Watches the application it is installed on.
class FocusReturn : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void activateAWindow();
};

} // namespace shell

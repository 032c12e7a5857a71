#pragma once

#include <QObject>
#include <QPointer>

namespace shell {

class HelpWindow;

/// Event filter for the application: F1 opens the help window or brings it to the front. The help
/// window is a child of the window in which F1 was pressed, so that the user can read it beside a
/// modal form. F1 does nothing while a list or a menu is open.
class HelpKey : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open(QWidget* window);

    QPointer<HelpWindow> help_;
};

} // namespace shell

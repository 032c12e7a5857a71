#pragma once

#include <QObject>
#include <QPointer>

namespace shell {

class HelpWindow;

/// Event filter for the application: F1 opens the help, or brings it forward. The help belongs to
/// the window in which F1 was pressed, so that it can be read beside a modal form. F1 does nothing
/// while a list or a menu is open.
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

#include "platform/controls/wheel_guard.h"

#include <QComboBox>
#include <QEvent>

namespace controls {

namespace {

class WheelGuard : public QObject
{
public:
    explicit WheelGuard(QComboBox& list) : QObject(&list), list_(list)
    {
        list.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Wheel || list_.hasFocus())
            return QObject::eventFilter(watched, event);
        event->ignore(); // The event goes on to the parent widget.
        return true;
    }

private:
    QComboBox& list_;
};

} // namespace

void guardFromWheel(QComboBox& list)
{
    list.setFocusPolicy(Qt::StrongFocus);
    new WheelGuard(list);
}

} // namespace controls

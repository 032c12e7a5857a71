#pragma once

#include <QObject>

namespace shell {

/// Installed on the application: Enter on a focused button clicks it, as Space does.
class EnterClicks : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace shell

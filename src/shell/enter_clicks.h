#pragma once

#include <QObject>

namespace shell {

/// Event filter for the application: pressing Enter on a focused button clicks it, as Space does.
class EnterClicks : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace shell

#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

namespace report {

/// Shows the progress of an operation that takes longer than half a second, and lets the user
/// cancel it. The object exists for the duration of the operation.
class WorkProgress
{
public:
    WorkProgress(QWidget* parent, const QString& label);

    /// Reports how many steps of the operation are done. Returns false if the user has cancelled
    /// the operation.
    bool report(int done, int total);

private:
    QProgressDialog dialog_;
    QElapsedTimer sinceReport_;
};

} // namespace report

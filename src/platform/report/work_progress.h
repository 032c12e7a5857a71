#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

namespace report {

/// Shows how far a longer work has come once it has lasted half a second, and lets the user cancel
/// it. Stands for as long as the work does.
class WorkProgress
{
public:
    WorkProgress(QWidget* parent, const QString& label);

    /// Reports progress; false once the user has cancelled.
    bool report(int done, int total);

private:
    QProgressDialog dialog_;
    QElapsedTimer sinceReport_;
};

} // namespace report

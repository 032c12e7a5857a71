#include "platform/report/work_progress.h"

namespace report {

using namespace Qt::StringLiterals;

namespace {

constexpr int silentMilliseconds = 500;
constexpr int betweenReports = 30;

} // namespace

WorkProgress::WorkProgress(QWidget* parent, const QString& label)
    : dialog_(label, u"ביטול"_s, 0, 1, parent)
{
    dialog_.setObjectName(u"WorkProgress"_s);
    dialog_.setWindowTitle(parent->windowTitle());
    dialog_.setLayoutDirection(Qt::RightToLeft);
    dialog_.setWindowModality(Qt::ApplicationModal);
    dialog_.setMinimumDuration(silentMilliseconds);
    dialog_.setAutoClose(false);
    dialog_.setAutoReset(false);
    dialog_.setValue(0);
    sinceReport_.start();
}

bool WorkProgress::report(int done, int total)
{
    if (sinceReport_.elapsed() >= betweenReports) {
        dialog_.setMaximum(total);
        dialog_.setValue(done);
        sinceReport_.start();
    }
    return !dialog_.wasCanceled();
}

} // namespace report

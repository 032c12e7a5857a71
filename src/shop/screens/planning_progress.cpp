#include "shop/screens/planning_progress.h"

#include "platform/runtime/guard.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QTimer>

#include <future>

namespace shop::screens {

using namespace Qt::StringLiterals;

namespace {

constexpr int pollMilliseconds = 10;
constexpr int patienceMilliseconds = 500;
constexpr int dialogWidth = 360; ///< Device-independent pixels, enough for the title.

/// Runs the planning of bars in other threads and reports its progress.
class Planning
{
public:
    Planning(const std::vector<Piece>& pieces, const SettingsByGroup& settings)
        : plans_(std::async(std::launch::async, [this, &pieces, &settings] {
              return planGroups(pieces, settings, {&cancelled_, {}},
                                [this](std::size_t done, std::size_t all) {
                                    done_ = static_cast<int>(done);
                                    all_ = static_cast<int>(all);
                                });
          }))
    {
    }

    bool isReady() const
    {
        return plans_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }
    int done() const { return done_; }
    int all() const { return all_; }

    /// Ends the planning and returns the best plan so far.
    ProgressedPlan take()
    {
        const bool isComplete = isReady();
        cancelled_ = true;
        return {plans_.get(), isComplete};
    }

private:
    std::atomic<bool> cancelled_ = false;
    std::atomic<int> done_ = 0;
    std::atomic<int> all_ = 0;
    std::future<std::vector<GroupPlan>> plans_; ///< The last member, because it uses the others.
};

/// Waits for the planning without a dialog, for at most half a second. Input of the user stays in
/// the event queue meanwhile, so that no window reacts before the dialog blocks the windows.
void waitPatiently(const Planning& planning)
{
    QEventLoop loop;
    QTimer poll;
    QTimer patience;
    runtime::on(&poll, &QTimer::timeout, &loop, [&] {
        if (planning.isReady())
            loop.quit();
    });
    runtime::on(&patience, &QTimer::timeout, &loop, [&] { loop.quit(); });
    poll.start(pollMilliseconds);
    patience.start(patienceMilliseconds);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void showProgress(const Planning& planning, QProgressDialog& dialog)
{
    // A cancelled dialog is not updated: QProgressDialog::setValue() processes events, after which
    // the dialog no longer reports that it was cancelled.
    if (dialog.wasCanceled())
        return;
    dialog.setMaximum(planning.all());
    dialog.setValue(planning.done());
}

void waitWithDialog(const Planning& planning, QWidget* parent)
{
    QProgressDialog dialog(u"מתכנן מוטות..."_s, u"הפסק"_s, 0, 0, parent);
    dialog.setObjectName(u"PlanningProgress"_s);
    dialog.setWindowTitle(u"תוכנית מוטות"_s);
    dialog.setLayoutDirection(Qt::RightToLeft);
    dialog.setMinimumWidth(dialogWidth);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    QEventLoop loop;
    QTimer poll;
    bool isShowing = false; // The dialog handles events when it shows a value.
    runtime::on(&dialog, &QProgressDialog::canceled, &loop, [&] { loop.quit(); });
    runtime::on(&poll, &QTimer::timeout, &loop, [&] {
        if (isShowing)
            return;
        isShowing = true;
        showProgress(planning, dialog);
        isShowing = false;
        if (planning.isReady() || dialog.wasCanceled())
            loop.quit();
    });
    dialog.show();
    poll.start(pollMilliseconds);
    loop.exec();
}

} // namespace

ProgressedPlan planWithProgress(const std::vector<Piece>& pieces, const SettingsByGroup& settings,
                                QWidget* parent)
{
    Planning planning(pieces, settings);
    waitPatiently(planning);
    if (!planning.isReady())
        waitWithDialog(planning, parent);
    return planning.take();
}

} // namespace shop::screens

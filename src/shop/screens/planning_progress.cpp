#include "shop/screens/planning_progress.h"

#include "platform/runtime/guard.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QTimer>

#include <future>
#include <utility>

namespace shop::screens {

using namespace Qt::StringLiterals;

namespace {

constexpr int pollMilliseconds = 10;
constexpr int patienceMilliseconds = 500;

} // namespace

std::vector<GroupPlan> planWithProgress(const std::vector<Piece>& pieces,
                                        const SettingsByGroup& settings, QWidget* parent)
{
    std::atomic<bool> cancelled = false;
    std::atomic<int> done = 0;
    std::atomic<int> all = 0;
    auto plans = std::async(std::launch::async, [&] {
        return planGroups(pieces, settings, {&cancelled, {}},
                          [&](std::size_t ready, std::size_t of) {
                              done = static_cast<int>(ready);
                              all = static_cast<int>(of);
                          });
    });
    QProgressDialog dialog(u"מתכנן מוטות..."_s, u"הפסק"_s, 0, 0, parent);
    dialog.setObjectName(u"PlanningProgress"_s);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(patienceMilliseconds);
    QEventLoop loop;
    QTimer poll;
    bool isShowing = false; // The dialog handles events when it shows a value.
    runtime::on(&poll, &QTimer::timeout, &loop, [&] {
        if (std::exchange(isShowing, true))
            return;
        dialog.setMaximum(all);
        dialog.setValue(done);
        cancelled = cancelled || dialog.wasCanceled();
        if (plans.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
            loop.quit();
        isShowing = false;
    });
    poll.start(pollMilliseconds);
    loop.exec();
    return plans.get();
}

} // namespace shop::screens

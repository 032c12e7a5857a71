#pragma once

#include "shop/shop_plan.h"

class QWidget;

namespace shop::screens {

struct ProgressedPlan
{
    std::vector<GroupPlan> groups;
    bool isComplete = true; ///< False if the search was stopped: the plan is the best one so far.
};

/// Plans the bars of the pieces. Meanwhile the windows take no input. If the planning takes longer
/// than half a second, a dialog shows the progress and lets the user cancel. The end of the program
/// cancels, too.
ProgressedPlan planWithProgress(const std::vector<Piece>& pieces, const SettingsByGroup& settings,
                                QWidget* parent);

} // namespace shop::screens

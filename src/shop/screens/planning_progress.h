#pragma once

#include "shop/shop_plan.h"

class QWidget;

namespace shop::screens {

struct ProgressedPlan
{
    std::vector<GroupPlan> groups;
    bool isComplete = true; ///< False if the search was stopped: the plan is the best one so far.
};

/// Plans the bars of the pieces. The windows accept no input meanwhile. If the planning takes
/// longer than half a second, a dialog shows the progress and lets the user cancel the planning.
/// Ending the program also cancels the planning.
ProgressedPlan planWithProgress(const std::vector<Piece>& pieces, const SettingsByGroup& settings,
                                QWidget* parent);

} // namespace shop::screens

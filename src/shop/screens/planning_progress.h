#pragma once

#include "shop/shop_plan.h"

class QWidget;

namespace shop::screens {

/// Plans the bars of the pieces. If this takes longer than half a second, it shows the progress and
/// lets the user cancel it; the result is then the best plan so far.
std::vector<GroupPlan> planWithProgress(const std::vector<Piece>& pieces,
                                        const SettingsByGroup& settings, QWidget* parent);

} // namespace shop::screens

#pragma once

#include "shop/pieces.h"

/// Sample lines.
namespace shoptest {

using namespace Qt::StringLiterals;

/// Returns line 1 of order 7, a window with two sashes.
inline shop::OrderLine window()
{
    shop::OrderLine line;
    line.order = 7;
    line.line = 1;
    line.frame = {119.4, 99.4, 2, u"משקוף"_s, u"לבן"_s};
    line.sash = {58.6, 93.5, 4, u"כנף"_s, u"חום"_s};
    line.glass = {50.2, 80.3, 2, u"רבודה"_s, u"שקוף"_s};
    line.mesh = {58.8, 93.1, 2, u"פיברגלס"_s, u"אפור"_s};
    line.uCut = line.uVasa = line.slatWidth = line.boxWidth = 0.0;
    line.slatCount = 0;
    return line;
}

inline shop::OrderLine door()
{
    shop::OrderLine line = window();
    line.sash.count = 1;
    line.glass.width = line.glass.height = line.mesh.width = line.mesh.height = 0.0;
    return line;
}

} // namespace shoptest

#pragma once

#include "shop/planning/filling.h"

namespace shop::planning {

/// Generates packings with few stop settings. If possible, all remaining pieces of a type go into
/// one pattern, which is then cut several times.
class Bundling
{
public:
    /// `bars` is the number of bars that a packing should have.
    Bundling(const Problem& problem, int bars, std::uint64_t seed);

    /// Returns another packing. It may have more bars than it should. It is empty if the limits end
    /// the search.
    Packing next(const Limits& limits);

private:
    struct Choice
    {
        Pattern pattern;
        int times = 0;
    };

    Choice wholeTypes(int times);
    Choice anyPieces();
    void setValues();
    void take(const Choice& choice, Packing& packing);

    const Problem& problem_;
    int bars_;
    Dice dice_;
    PatternSearch anySearch_;
    Problem whole_; ///< All pieces of a type that go into one bar are one piece here.
    PatternSearch wholeSearch_;
    std::vector<int> left_;
    std::vector<double> values_; ///< The value of one piece, by type.
    std::vector<double> wholeValues_;
    double power_ = 1;
    double slack_ = 0; ///< The size that may still be wasted. A double, because it can exceed Size.
    int barsLeft_ = 0;
    double tolerance_ = 1;
};

} // namespace shop::planning

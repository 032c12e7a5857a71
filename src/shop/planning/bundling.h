#pragma once

#include "shop/planning/filling.h"

namespace shop::planning {

/// Distributes the pieces over bars so that the saw's stop is set rarely. If possible, all
/// remaining pieces of one length are cut from equal bars.
class Bundling
{
public:
    /// `bars` is the intended number of bars. A result of next() may have more bars.
    Bundling(const Problem& problem, int bars, std::uint64_t seed);

    /// Returns another distribution of all pieces over bars. It may use more bars than intended.
    /// The result is empty if the search is cancelled or reaches its deadline.
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

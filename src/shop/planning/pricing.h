#pragma once

#include "shop/planning/problem.h"

namespace shop::planning {

/// The pricing problem of column generation, a bounded knapsack: finds patterns whose pieces have a
/// total price above the price of a bar, which is 1.
///
/// Upper bounds are computed by dynamic programming over a grid. Sizes are rounded down to the
/// grid, so that the bounds are valid. Patterns are searched with the exact sizes.
class Pricing
{
public:
    explicit Pricing(const Problem& problem);

    /// Sets the price and the available number of pieces for each type. Prices must not be
    /// negative.
    void setPrices(const std::vector<double>& prices, const std::vector<int>& pieces);
    /// Returns an upper bound of the total price of any pattern.
    double bound() const;
    /// Returns patterns with a total price above 1. No two of them begin with the same type.
    std::vector<Pattern> patterns(std::size_t most);

private:
    struct Row
    {
        int type;
        int count;
        Size size;
        std::size_t cells;
        double price;
    };

    void addRow(std::size_t row);
    /// Returns an upper bound of the total price of pieces that fit into the length `room`. Only
    /// the types of the row `row` and of later rows are used.
    double boundAt(std::size_t row, Size room) const
    {
        const float sum = table_[row * width_ + static_cast<std::size_t>(room / cell_)];
        return static_cast<double>(sum) * margin_;
    }
    double marginOfSums() const;
    void search(std::size_t row, Size room, double value);

    const Problem& problem_;
    Size cell_;
    std::size_t width_; ///< The number of grid cells, including cell 0.
    std::vector<Row> rows_;
    std::vector<float> table_; ///< By row and room: an upper bound for this and all later types.
    double margin_ = 1;        ///< The factor that makes a sum in the table an upper bound.
    Pattern current_;
    Pattern best_;
    double bestValue_ = 0;
    int steps_ = 0;
};

} // namespace shop::planning

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

    /// Sets the prices by type, which must not be negative, and the available pieces.
    void setPrices(const std::vector<double>& prices, const std::vector<int>& pieces);
    /// Returns an upper bound of the price of all patterns.
    double bound() const;
    /// Returns patterns with a price above 1, at most one for each first type.
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
    /// Returns an upper bound of the price of the pieces of this and later rows in the room.
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

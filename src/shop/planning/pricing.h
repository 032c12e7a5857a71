#pragma once

#include "shop/planning/problem.h"

namespace shop::planning {

/// Finds patterns (sets of pieces on one bar) with a total price above 1. The linear program in
/// Columns sets the prices, and only such patterns can improve its solution.
///
/// The search skips patterns whose upper bound of the price is too low. The bounds are computed on
/// a grid of lengths. Sizes are rounded down to the grid, so that no bound is too low.
class Pricing
{
public:
    explicit Pricing(const Problem& problem);

    /// Sets the price of a piece and the available number of pieces for each type (length). Prices
    /// must not be negative.
    void setPrices(const std::vector<double>& prices, const std::vector<int>& pieces);
    /// Returns an upper bound of the total price of the pieces on one bar.
    double bound() const;
    /// Returns patterns (sets of pieces on one bar) whose pieces have a total price above 1, which
    /// is the price of a bar. Each pattern begins with another type of piece.
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
    /// the types of piece in `rows_` from the index `row` onwards are counted.
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

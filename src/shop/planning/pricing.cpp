#include "shop/planning/pricing.h"

#include <algorithm>
#include <numeric>

namespace shop::planning {

namespace {

constexpr double leastPrice = 1 + 1e-6;      // The price of a bar is 1.
constexpr double roundingOfAFloat = 0x1p-24; // The greatest relative error of one operation.
constexpr Size fewestCells = 1000;
constexpr Size mostCells = 24000;
constexpr Size mostWork = 3000000; // The number of additions per table.
constexpr int stepsOfAPricing = 300;

/// Returns the size of one cell of the grid on which upper bounds are computed. It is the greatest
/// common divisor of all sizes if the grid then has not too many cells, otherwise a fraction of the
/// bar.
Size cellOf(const Problem& problem)
{
    Size work = 0;
    Size divisor = 0;
    for (std::size_t i = 0; i < problem.types(); ++i) {
        work += std::min<Size>(problem.demand[i], problem.capacity / problem.sizes[i]);
        divisor = std::gcd(divisor, problem.sizes[i]);
    }
    const Size cells = std::clamp(mostWork / std::max<Size>(work, 1), fewestCells, mostCells);
    return std::max({problem.capacity / cells, divisor, Size(1)});
}

} // namespace

Pricing::Pricing(const Problem& problem)
    : problem_(problem), cell_(cellOf(problem)),
      width_(static_cast<std::size_t>(problem.capacity / cell_) + 1)
{
}

void Pricing::setPrices(const std::vector<double>& prices, const std::vector<int>& pieces)
{
    rows_.clear();
    for (std::size_t i = 0; i < problem_.types(); ++i) {
        const Size size = problem_.sizes[i];
        if (pieces[i] > 0 && prices[i] > 0)
            rows_.push_back({static_cast<int>(i),
                             static_cast<int>(std::min<Size>(pieces[i], problem_.capacity / size)),
                             size, static_cast<std::size_t>(size / cell_), prices[i]});
    }
    margin_ = marginOfSums();
    table_.assign((rows_.size() + 1) * width_, 0.F);
    for (std::size_t row = rows_.size(); row-- > 0;)
        addRow(row);
}

/// Returns the factor, slightly above 1, that makes a sum in `table_` an upper bound again. Such a
/// sum is the total price of pieces on one bar. It is computed with floats, so each addition, and
/// the conversion of each price to a float, can reduce it by a rounding error. A sum has at most
/// one addition for each piece that fits on a bar.
double Pricing::marginOfSums() const
{
    double pieces = 0;
    double smallestRow = static_cast<double>(width_);
    for (const Row& each : rows_) {
        pieces += each.count;
        if (each.cells > 0)
            smallestRow = std::min(smallestRow, static_cast<double>(each.cells));
    }
    const double inGrid = std::min(pieces, static_cast<double>(width_) / smallestRow);
    // The number of float operations includes two for each type of piece, because a type whose size
    // is rounded down to 0 cells causes a multiplication and an addition.
    const double operations = inGrid + 2 * static_cast<double>(rows_.size()) + 2;
    const double lost = operations * roundingOfAFloat;
    return 1 / (1 - lost);
}

/// Computes one row of the table from the next row. A row has one upper bound for each free length
/// of a bar: the highest total price of pieces that fit into it. Each row belongs to a type of
/// piece, and its bounds allow pieces of this type and of the types of all later rows. Each bound
/// is the maximum over the possible numbers of pieces of the row's own type.
void Pricing::addRow(std::size_t row)
{
    const Row& each = rows_[row];
    const float price = static_cast<float>(each.price);
    const float* below = table_.data() + (row + 1) * width_;
    float* here = table_.data() + row * width_;
    std::copy(below, below + width_, here);
    if (each.cells == 0) { // The size is rounded down to no cell.
        std::for_each(here, here + width_,
                      [&](float& cell) { cell += price * static_cast<float>(each.count); });
        return;
    }
    std::vector<float> former(width_);
    for (int i = 0; i < each.count && each.cells * (static_cast<std::size_t>(i) + 1) < width_;
         ++i) {
        std::copy(here, here + width_, former.begin());
        const float* from = former.data();
        float* to = here + each.cells;
        const std::size_t cells = width_ - each.cells;
        for (std::size_t cell = 0; cell < cells; ++cell)
            to[cell] = std::max(to[cell], from[cell] + price);
    }
}

double Pricing::bound() const
{
    return boundAt(0, problem_.capacity);
}

std::vector<Pattern> Pricing::patterns(std::size_t most)
{
    std::vector<Pattern> found;
    for (std::size_t row = 0; row < rows_.size() && found.size() < most; ++row) {
        bestValue_ = leastPrice;
        best_.clear();
        steps_ = stepsOfAPricing;
        const Row& each = rows_[row];
        for (int count = each.count; count > 0; --count) {
            current_.assign(1, {each.type, count});
            search(row + 1, problem_.capacity - count * each.size, count * each.price);
        }
        if (!best_.empty())
            found.push_back(best_);
    }
    return found;
}

void Pricing::search(std::size_t row, Size room, double value)
{
    if (value > bestValue_) {
        bestValue_ = value;
        best_ = current_;
    }
    --steps_;
    for (; row < rows_.size() && steps_ >= 0; ++row) {
        if (value + boundAt(row, room) <= bestValue_)
            return;
        const Row& each = rows_[row];
        for (Size count = std::min<Size>(each.count, room / each.size); count > 0; --count) {
            current_.push_back({each.type, static_cast<int>(count)});
            search(row + 1, room - count * each.size,
                   value + static_cast<double>(count) * each.price);
            current_.pop_back();
        }
    }
}

} // namespace shop::planning

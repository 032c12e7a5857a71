#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <optional>
#include <utility>
#include <vector>

namespace dao {

/// Some pages of a long list of rows, the ones used last. A page that is kept holds a value or a
/// hole for each of its rows.
template <typename Row>
class RowWindow
{
public:
    /// Rows are kept by pages of `pageSize` rows, at most `pageLimit` of them.
    RowWindow(std::size_t pageSize, std::size_t pageLimit)
        : pageSize_(pageSize), pageLimit_(pageLimit)
    {
    }

    /// The first row of the page that a row lies on.
    std::size_t pageStart(std::size_t row) const { return row - row % pageSize_; }
    std::size_t pageSize() const { return pageSize_; }

    /// The row's value; null where it is not kept. Stays good until the next change.
    const Row* find(std::size_t row) const
    {
        for (const Page& page : pages_) {
            if (page.start != pageStart(row))
                continue;
            const std::size_t place = row - page.start;
            return place < page.rows.size() && page.rows[place] ? &*page.rows[place] : nullptr;
        }
        return nullptr;
    }

    /// Keeps the page that begins with row `start`; the page unused for longest makes room.
    void keep(std::size_t start, std::vector<Row> rows)
    {
        pages_.remove_if([start](const Page& page) { return page.start == start; });
        if (pages_.size() >= pageLimit_)
            pages_.pop_back();
        Page page{start, {}};
        for (Row& each : rows)
            page.rows.emplace_back(std::move(each));
        pages_.push_front(std::move(page));
    }

    /// Marks the row's page as used last.
    void touch(std::size_t row)
    {
        const auto page = std::find_if(pages_.begin(), pages_.end(), [&](const Page& each) {
            return each.start == pageStart(row);
        });
        if (page != pages_.end())
            pages_.splice(pages_.begin(), pages_, page);
    }

    /// Forgets one row's value.
    void forget(std::size_t row)
    {
        for (Page& page : pages_) {
            if (page.start == pageStart(row) && row - page.start < page.rows.size())
                page.rows[row - page.start].reset();
        }
    }

    /// Follows the removal of a row: the rows behind it move up, so their pages are forgotten.
    void remove(std::size_t row)
    {
        pages_.remove_if([&](const Page& page) { return page.start >= pageStart(row); });
    }

private:
    struct Page
    {
        std::size_t start;
        std::vector<std::optional<Row>> rows;
    };

    std::size_t pageSize_;
    std::size_t pageLimit_;
    std::list<Page> pages_; ///< The one used last stands first.
};

} // namespace dao

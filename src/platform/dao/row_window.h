#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <optional>
#include <utility>
#include <vector>

namespace dao {

/// A cache of the most recently used pages of a long list of rows. For each row of a cached page,
/// the cache contains an object of the type Row, unless this object was discarded.
template <typename Row>
class RowWindow
{
public:
    /// Creates a cache of at most `pageLimit` pages with `pageSize` rows each.
    RowWindow(std::size_t pageSize, std::size_t pageLimit)
        : pageSize_(pageSize), pageLimit_(pageLimit)
    {
    }

    /// Returns the index of the first row of the page that contains `row`.
    std::size_t pageStart(std::size_t row) const { return row - row % pageSize_; }
    std::size_t pageSize() const { return pageSize_; }

    /// Returns the cached value of a row, or nullptr if the row has no cached value. The pointer is
    /// valid until the next change of the cache.
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

    /// Caches the page that starts with row `start`. If the cache is full, the least recently used
    /// page is removed.
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

    /// Marks the page of the row as the most recently used page.
    void touch(std::size_t row)
    {
        const auto page = std::find_if(pages_.begin(), pages_.end(), [&](const Page& each) {
            return each.start == pageStart(row);
        });
        if (page != pages_.end())
            pages_.splice(pages_.begin(), pages_, page);
    }

    /// Discards the value of one row.
    void forget(std::size_t row)
    {
        for (Page& page : pages_) {
            if (page.start == pageStart(row) && row - page.start < page.rows.size())
                page.rows[row - page.start].reset();
        }
    }

    /// Updates the cache after a row was removed from the list. Discards the page of this row and
    /// all later pages, because the positions of their rows have changed.
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
    std::list<Page> pages_; ///< Cached pages, the most recently used first.
};

} // namespace dao

#include "platform/dao/row_list.h"

#include <QHash>

#include <algorithm>
#include <limits>
#include <numeric>

namespace dao {

namespace {

/// The placeholder of the first row in a list that is created from a range of keys. The following
/// rows have the following numbers as placeholders. When a row is read, its row id replaces its
/// placeholder. All placeholders are lower than any row id of a table.
constexpr RowNumber firstMark = std::numeric_limits<RowNumber>::min();

} // namespace

RowList::RowList(RowNumbers numbers) : numbers_(std::move(numbers)) {}

RowList::RowList(const TableRows& rows, int keyOrdinal, const KeyRun& keys)
    : numbers_(keys.count), keys_(Keys{rows, keyOrdinal, keys})
{
    std::iota(numbers_.begin(), numbers_.end(), firstMark);
}

bool RowList::isMark(RowNumber number) const
{
    return keys_ && number < firstMark + static_cast<RowNumber>(keys_->run.count);
}

RowNumber RowList::at(const SessionOwner& owner, std::size_t place)
{
    if (isMark(numbers_[place]))
        readMarked(owner, place, 1);
    return numbers_[place];
}

std::optional<StoredRow> RowList::row(const SessionOwner& owner, const TableRows& table,
                                      std::size_t place)
{
    std::vector<std::optional<StoredRow>> marked = readMarked(owner, place, 1);
    std::optional<StoredRow> found;
    found.swap(marked.front());
    if (found || isMark(numbers_[place]))
        return found;
    return table.fetch(owner.session(), numbers_[place]);
}

std::vector<std::optional<StoredRow>> RowList::rows(const SessionOwner& owner,
                                                    const TableRows& table, std::size_t first,
                                                    std::size_t count)
{
    std::vector<std::optional<StoredRow>> result = readMarked(owner, first, count);
    RowNumbers numbers;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count; ++i) {
        if (result[i] || isMark(numbers_[first + i]))
            continue;
        numbers.push_back(numbers_[first + i]);
        places.push_back(i);
    }
    std::vector<std::optional<StoredRow>> others = table.fetch(owner.session(), numbers);
    for (std::size_t i = 0; i < places.size(); ++i)
        result[places[i]] = std::move(others[i]);
    return result;
}

std::size_t RowList::find(const SessionOwner& owner, RowNumber number)
{
    const auto place = [this](RowNumber wanted) {
        return static_cast<std::size_t>(std::find(numbers_.begin(), numbers_.end(), wanted) -
                                        numbers_.begin());
    };
    const std::size_t known = place(number);
    if (known < size() || !keys_)
        return known;
    const std::optional<StoredRow> row = keys_->rows.fetch(owner.session(), number);
    if (!row)
        return size();
    const qint64 key = row->values[static_cast<std::size_t>(keys_->ordinal)].toLongLong();
    const qint64 last = keys_->run.first + static_cast<qint64>(keys_->run.count) - 1;
    if (key < keys_->run.first || key > last)
        return size();
    const std::size_t found = place(firstMark + (key - keys_->run.first));
    if (found < size())
        numbers_[found] = number;
    return found;
}

void RowList::append(RowNumber number)
{
    numbers_.push_back(number);
}

void RowList::remove(std::size_t place)
{
    numbers_.erase(numbers_.begin() + static_cast<std::ptrdiff_t>(place));
}

/// Reads the rows for which the list contains a placeholder instead of a row id. Replaces these
/// placeholders by the row ids.
std::vector<std::optional<StoredRow>> RowList::readMarked(const SessionOwner& owner,
                                                          std::size_t first, std::size_t count)
{
    std::vector<std::optional<StoredRow>> result(count);
    QHash<qint64, std::size_t> asked;
    for (std::size_t i = 0; i < count; ++i) {
        if (isMark(numbers_[first + i]))
            asked.insert(keys_->run.first + (numbers_[first + i] - firstMark), i);
    }
    if (asked.isEmpty())
        return result;
    const auto [low, high] = std::minmax_element(asked.keyBegin(), asked.keyEnd());
    for (StoredRow& each : keys_->rows.rowsOfKeys(owner.session(), keys_->ordinal, *low, *high)) {
        const auto place =
            asked.constFind(each.values[static_cast<std::size_t>(keys_->ordinal)].toLongLong());
        if (place == asked.cend())
            continue;
        numbers_[first + *place] = each.number;
        result[*place] = std::move(each);
    }
    return result;
}

} // namespace dao

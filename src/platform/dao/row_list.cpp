#include "platform/dao/row_list.h"

#include "platform/dao/database.h"

#include <QHash>

#include <algorithm>
#include <limits>
#include <numeric>

namespace dao {

namespace {

/// So many rows around one that is come to are looked up with it.
constexpr std::size_t lookUpSize = 64;

/// The mark of the first key; the others' follow. No table counts its rows down to there.
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

RowNumber RowList::at(Database& database, std::size_t place)
{
    if (isMark(numbers_[place])) {
        const std::size_t start = place - place % lookUpSize;
        lookUp(database, start, std::min(lookUpSize, size() - start));
    }
    return numbers_[place];
}

RowNumbers RowList::numbers(Database& database, std::size_t first, std::size_t count)
{
    lookUp(database, first, count);
    const auto begin = numbers_.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

std::size_t RowList::find(Database& database, RowNumber number)
{
    const auto place = [this](RowNumber wanted) {
        return static_cast<std::size_t>(std::find(numbers_.begin(), numbers_.end(), wanted) -
                                        numbers_.begin());
    };
    const std::size_t known = place(number);
    if (known < size() || !keys_)
        return known;
    const std::optional<StoredRow> row = keys_->rows.fetch(database.driver(), number);
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

/// Puts the numbers of the rows in the place of their marks.
void RowList::lookUp(Database& database, std::size_t first, std::size_t count)
{
    std::vector<std::size_t> asked;
    for (std::size_t place = first; place < first + count; ++place) {
        if (isMark(numbers_[place]))
            asked.push_back(place);
    }
    if (asked.empty())
        return;
    const auto keyAt = [this](std::size_t place) {
        return keys_->run.first + (numbers_[place] - firstMark);
    };
    QHash<qint64, RowNumber> found;
    for (const auto& [key, number] : keys_->rows.numbersOfKeys(
             database.driver(), keys_->ordinal, keyAt(asked.front()), keyAt(asked.back())))
        found.insert(key, number);
    for (const std::size_t place : asked)
        numbers_[place] = found.value(keyAt(place), numbers_[place]);
}

} // namespace dao

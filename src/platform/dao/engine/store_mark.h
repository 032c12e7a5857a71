#pragma once

#include <QString>

namespace dao {

/// The number of the run-time error for a store that is not the one that this process opened first
/// at the path.
constexpr int storeReplaced = 3197;

/// The name of the table that contains the store's identifying mark in its only row. The table is
/// internal to the program, and TableDefs does not list it.
constexpr QLatin1StringView storeMarkTable("zomrel_store");

/// A mark that distinguishes a store from every other store, and from the same store before a
/// restore. The identity and the generation are random texts. Both texts are empty for a store that
/// an older version made. The first write by the present version gives both texts the same value.
struct StoreMark
{
    QString identity;   ///< Assigned when the store is created, imported or moved.
    QString generation; ///< Assigned with the identity and changed by a restore.

    bool isEmpty() const { return identity.isEmpty() && generation.isEmpty(); }
    /// Returns true if the mark was added to a store that an older version had made without a mark.
    bool isOfOlderStore() const { return !isEmpty() && identity == generation; }
    bool operator==(const StoreMark&) const = default;
};

/// Returns a new mark for a store that an older version made without a mark.
StoreMark markOfOlderStore();
/// Returns the mark for a store after a restore, with the same identity and a new generation. If
/// the given mark is empty, the returned mark has a new identity, too.
StoreMark renewed(const StoreMark& mark);

/// Returns the mark that the store at the path must have in this process, which is the first mark
/// read there. The first call for a path stores `mark` as this mark.
StoreMark firstSeenMark(const QString& path, const StoreMark& mark);
/// Replaces the mark that this process expects at the path, for example because this process has
/// written a new mark to the store.
void expectMark(const QString& path, const StoreMark& mark);

} // namespace dao

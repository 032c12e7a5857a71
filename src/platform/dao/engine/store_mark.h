#pragma once

#include <QString>

namespace dao {

/// The number of the run-time error for a store that is not the one that this process opened first.
constexpr int storeReplaced = 3197;

/// The table with one row that holds the store's mark. It belongs to the program, so no listing of
/// tables shows it.
constexpr QLatin1StringView storeMarkTable("zomrel_store");

/// Distinguishes a store from every other store, and from the same store after a restore. Both
/// values are random texts. Both are empty for a store that an older version made, until somebody
/// writes to it; then both get the same value.
struct StoreMark
{
    QString identity;   ///< Assigned when the store is created, imported or moved.
    QString generation; ///< Assigned with the identity and changed by a restore.

    bool isEmpty() const { return identity.isEmpty() && generation.isEmpty(); }
    /// Returns true for the mark that a store of an older version has got later.
    bool isOfOlderStore() const { return !isEmpty() && identity == generation; }
    bool operator==(const StoreMark&) const = default;
};

/// Returns a mark for a store that an older version made.
StoreMark markOfOlderStore();
/// Returns the mark of the same store after a restore. For an empty mark, returns one that no other
/// store has.
StoreMark renewed(const StoreMark& mark);

/// Returns the mark that this process expects at the path: the one that it has seen there first.
/// The first call for a path stores the given mark.
StoreMark firstSeenMark(const QString& path, const StoreMark& mark);
/// Replaces the mark that this process expects at the path, for example because the process itself
/// has changed it.
void expectMark(const QString& path, const StoreMark& mark);

} // namespace dao

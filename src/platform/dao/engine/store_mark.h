#pragma once

#include <QString>

namespace dao {

/// The number of the run-time error that is thrown if the store at a path was replaced or restored
/// after this process had opened it first.
constexpr int storeReplaced = 3197;

/// The name of the table that contains the store's identifying mark in its only row. The table is
/// internal to the program, and TableDefs does not list it.
constexpr QLatin1StringView storeMarkTable("zomrel_store");

/// A mark that distinguishes a store from every other store, and from the same store before a
/// restore. The identity and the generation are random texts. Both texts are empty for a store that
/// an older version made. The first write by the present version gives both texts the same value,
/// if the user has the right to do so.
struct StoreMark
{
    QString identity;   ///< Assigned when the store is created, imported or moved.
    QString generation; ///< Assigned with the identity and changed by a restore.

    bool isEmpty() const { return identity.isEmpty() && generation.isEmpty(); }
    /// Returns true if this identifying mark was added later, to a store that an older version of
    /// the program had made without a mark.
    bool isOfOlderStore() const { return !isEmpty() && identity == generation; }
    bool operator==(const StoreMark&) const = default;
};

/// Returns a new identifying mark for a store that an older version of the program made without
/// one. The two texts of the mark are equal, so that isOfOlderStore recognises it.
StoreMark markOfOlderStore();
/// Returns the identifying mark for a store after a restore: the same identity and a new random
/// text as generation. If the given mark is empty, the identity is new, too.
StoreMark renewed(const StoreMark& mark);

/// Returns the identifying mark that this process expects in the store at the path. The first call
/// for a path stores `mark`, which was read from the store, as the expected mark.
StoreMark firstSeenMark(const QString& path, const StoreMark& mark);
/// Replaces the identifying mark that this process expects in the store at the path, for example
/// because this process has written a new mark to the store.
void expectMark(const QString& path, const StoreMark& mark);

} // namespace dao

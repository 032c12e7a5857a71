#pragma once

#include <QList>
#include <QStringList>

namespace testsupport {

/// Damage to a store, as SQL for the store's own engine. The statements expect the delivered
/// catalogue, the orders 1 and 2, and lines of both.
struct StoreHarm
{
    const char* name;
    QStringList statements;
    /// True if the program cannot add a line to the store.
    bool endsTheProgram = false;
};

/// Returns every kind of damage to the schema and to the rows that the tests plant, for the engine
/// that the tests run on. The program has to work or end with an error on such a store, and the
/// check of a store has to find the damage.
QList<StoreHarm> storeHarms();

} // namespace testsupport

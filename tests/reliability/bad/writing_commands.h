#pragma once

#include "reliability/bad/working_day.h"
#include "support/temporary_store.h"

#include <QMap>
#include <QVariant>

#include <array>
#include <utility>

/// The commands that write to the store. They are tried where writing fails.
enum Command {
    NewOrder,
    AddLine,
    DeleteLine,
    DeleteAllLines,
    SaveDetails,
    PrintOrder,
    CloseOrder,
    AddSeries,
    SaveSeries,
    DeleteSeries,
    AddName,
    ChangeName,
    DeleteName
};

inline constexpr std::array<std::pair<const char*, Command>, 13> writingCommands{
    {{"new order", NewOrder},
     {"line", AddLine},
     {"deleting", DeleteLine},
     {"deleting all", DeleteAllLines},
     {"details", SaveDetails},
     {"printing", PrintOrder},
     {"closing", CloseOrder},
     {"series", AddSeries},
     {"saving a series", SaveSeries},
     {"deleting a series", DeleteSeries},
     {"name", AddName},
     {"changing a name", ChangeName},
     {"deleting a name", DeleteName}}};

/// Returns true for commands in the kind and colour grids, which show a message on failure and
/// continue.
bool isInGrid(Command command);

/// Creates the store for the command: order 1, two series and two frame kinds. The order is closed
/// for a new-order command and has no lines if only its details are saved.
void layStore(testsupport::TemporaryStore& store, Command command);

/// Runs everything up to the command. Returns false if the program has ended.
bool prepare(WorkingDay& day, Command command);

/// Runs the command and answers its question with Yes. A grid command runs by leaving the row or
/// pressing Delete.
void run(WorkingDay& day, Command command);

/// All rows of the store by table name and key.
using AllRows = QMap<QString, QMap<int, QVariantList>>;
AllRows allRows(testsupport::TemporaryStore& store);

/// Returns the rows that the command produces if nothing fails.
AllRows rowsDone(Command command);

/// Returns true if a failed command may leave these rows: the old rows, or, for a command that
/// changes several rows, each row either old or new.
bool mayBeLeft(Command command, const AllRows& before, const AllRows& done, const AllRows& after);

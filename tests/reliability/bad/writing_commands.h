#pragma once

#include "reliability/bad/working_day.h"
#include "support/temporary_store.h"

#include <QMap>
#include <QVariant>

#include <array>
#include <utility>

/// The commands that write to the store, tried where they cannot.
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

/// Commands in the grids of kinds and colours, which tell of a refusal themselves and go on.
bool isInGrid(Command command);

/// The store as the command finds it: order 1, closed before a new one and without lines where its
/// details are saved by themselves, two series, two kinds of frame.
void layStore(testsupport::TemporaryStore& store, Command command);

/// All up to the moment at which the command is given. False where the program has ended.
bool prepare(WorkingDay& day, Command command);

/// Gives the command, with Yes to its question; one in a grid by leaving the row or by Delete.
void run(WorkingDay& day, Command command);

/// Every row of the store by its table and the number that it is known by.
using AllRows = QMap<QString, QMap<int, QVariantList>>;
AllRows allRows(testsupport::TemporaryStore& store);

/// The rows that the command makes of those that it finds where nothing hinders it.
AllRows rowsDone(Command command);

/// True for what a command that failed may leave: what was there, or, for one that changes several
/// rows, each row as it was or as it was to be.
bool mayBeLeft(Command command, const AllRows& before, const AllRows& done, const AllRows& after);

#pragma once

#include "tools/store/old_store/old_format.h"

#include <QStringList>

namespace storetools {

/// The hidden command that reads an old file and writes what it holds to the standard output.
constexpr auto readingCommand = "read-old-store";

/// A process that tells of an old store on its standard output, as a FrameWriter does.
struct ReadingProcess
{
    QString program;
    QStringList arguments;
    int longestSilence = 60; ///< Seconds; one that says nothing for longer hangs.
};

/// Hands on what the process tells, which may end as it likes or hang. Raises 3049 where it does
/// not come to a good end, with the last line that it wrote to the error stream or how it ended; 51
/// where it cannot be started; and what the visitor raises.
void readFrom(const ReadingProcess& process, OldStoreVisitor& visitor);

/// Reads an old store in a process of its own and hands on what it tells. Raises 3049 with a
/// description of the damage where the file cannot be read to its end, and what the visitor raises.
void readOldStore(const QString& path, OldStoreVisitor& visitor);

/// What that other process does: its exit status. What keeps it from reading goes to the error
/// stream.
int runReading(const QString& path);

} // namespace storetools

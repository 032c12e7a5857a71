#pragma once

#include "tools/store/old_store/old_format.h"
#include "tools/store/old_store/reading_command.h"

#include <QStringList>

namespace storetools {

/// A command line whose process writes an old store to its standard output in the format of
/// FrameWriter.
struct ReadingProcess
{
    QString program;
    QStringList arguments;
    /// Timeout in seconds; a process that writes nothing for this long is treated as hung.
    int longestSilence = 60;
    /// Timeout in seconds for the whole process.
    int longestTime = 3600;
};

/// Runs the process and passes its output to the visitor. Throws CorruptDatabase (3049) if the
/// process fails, crashes or hangs, with the last line of its error stream or the way it ended.
/// Throws InternalError (51) if the process cannot be started, and any error of the visitor.
void readFrom(const ReadingProcess& process, OldStoreVisitor& visitor);

/// Reads an old store in a separate process and passes its contents to the visitor. Throws
/// CorruptDatabase (3049) with a description of the damage if the file cannot be read completely,
/// and any error of the visitor.
void readOldStore(const QString& path, OldStoreVisitor& visitor);

/// Main function of the separate reading process. Returns its exit status and writes errors to the
/// error stream.
int runReading(const QString& path);

} // namespace storetools

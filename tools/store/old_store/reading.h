#pragma once

#include "tools/store/old_store/old_format.h"
#include "tools/store/old_store/reading_command.h"

#include <QStringList>

namespace storetools {

/// The command line and the timeouts of the separate process that reads an old store. The process
/// writes the store's contents to its standard output, in the format of FrameWriter.
struct ReadingProcess
{
    QString program;
    QStringList arguments;
    /// The longest time in seconds for which the process that reads the old store may write no
    /// output. A process that is silent for longer counts as hung.
    int longestSilence = 60;
    /// Timeout in seconds for the whole process.
    int longestTime = 3600;
};

/// Runs the process that reads an old store, and passes the contents of the store to the visitor.
/// Throws CorruptDatabase (3049) if the process fails, crashes or hangs; the description contains
/// the last line of the process's error stream or says how the process ended. Throws InternalError
/// (51) if the process cannot be started, and any error of the visitor.
void readFrom(const ReadingProcess& process, OldStoreVisitor& visitor);

/// Reads an old store in a separate process and passes its contents to the visitor. Throws
/// CorruptDatabase (3049) with a description of the damage if the file cannot be read completely,
/// and any error of the visitor.
void readOldStore(const QString& path, OldStoreVisitor& visitor);

/// The main function of the separate process that reads the old store at `path`. Returns the exit
/// status and writes errors to the error stream.
int runReading(const QString& path);

} // namespace storetools

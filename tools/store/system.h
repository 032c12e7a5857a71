#pragma once

#include <QTextStream>

#include <cstdio>

namespace storetools {

/// Limits this process to 1 GiB of memory and to `cpuSeconds` of CPU time, forbids it to write
/// files and disables core dumps.
void limitThisProcess(int cpuSeconds);

/// Opens standard streams that the caller has closed, in a way that every use of them fails.
/// Otherwise the first file that the program opens would take the place of the stream.
void fillStandardStreams();

/// Lets a console show the program's output, which is UTF-8, until the program ends.
void useUtf8Console();

/// Writes everything that remains in the streams of the standard output and the standard error.
/// Returns false if any of the output could not be written, and writes a message with the name of
/// the program to `err`.
bool finishOutput(const QString& program, QTextStream& out, QTextStream& err);

/// Duplicates the standard output and redirects the original to the error stream, so that later
/// writes to the standard output by other code do not mix with the data. Returns the duplicate
/// descriptor, or -1 on failure.
int takeStandardOutput();

bool isTerminal(FILE* stream);
/// Returns true if the error stream is a terminal.
bool errorsGoToATerminal();

} // namespace storetools

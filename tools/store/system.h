#pragma once

#include <QTextStream>

#include <cstdio>

namespace storetools {

/// Limits this process to 1 GiB of memory and to `cpuSeconds` of CPU time, prevents the process
/// from writing files, and disables core dumps.
void limitThisProcess(int cpuSeconds);

/// Opens each standard stream that the caller of the program has closed, in such a way that every
/// use of the stream fails. Otherwise the first file that the program opens would get the stream's
/// descriptor.
void fillStandardStreams();

/// Sets the output encoding of a Windows console to UTF-8, the encoding of the program's output,
/// until the program ends.
void useUtf8Console();

/// Flushes the streams of the standard output and the standard error. If some of the output could
/// not be written, writes a message with the name of the program to `err` and returns false.
bool finishOutput(const QString& program, QTextStream& out, QTextStream& err);

/// Duplicates the standard output and then redirects the standard output to the error stream, so
/// that output of other code does not mix with the data. Returns the descriptor of the duplicate,
/// or -1 on failure.
int takeStandardOutput();

bool isTerminal(FILE* stream);
/// Returns true if the error stream is a terminal.
bool errorsGoToATerminal();

} // namespace storetools

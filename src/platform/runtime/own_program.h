#pragma once

#include <QString>

namespace runtime {

/// A copy of the running program in memory. The copy can be started even if the folder of the
/// program does not respond. On a system that cannot keep a file in memory, path() returns the path
/// of the program's own file.
class OwnProgram
{
public:
    OwnProgram();
    ~OwnProgram();
    OwnProgram(const OwnProgram&) = delete;
    OwnProgram& operator=(const OwnProgram&) = delete;

    /// Returns a path from which a child process can execute the program.
    QString path() const;

private:
    int descriptor_ = -1;
};

} // namespace runtime

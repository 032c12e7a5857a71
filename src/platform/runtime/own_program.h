#pragma once

#include <QString>

namespace runtime {

/// A copy of the running program in memory. It can be started while the folder of the program does
/// not answer. On systems without files in memory it is the program's file itself.
class OwnProgram
{
public:
    OwnProgram();
    ~OwnProgram();
    OwnProgram(const OwnProgram&) = delete;
    OwnProgram& operator=(const OwnProgram&) = delete;

    /// Returns a path at which a child process finds the program.
    QString path() const;

private:
    int descriptor_ = -1;
};

} // namespace runtime

#pragma once

#include <QFile>

#include <cstdio>

namespace storetools {

/// The standard output or the standard error. The marks that isolate names in a Hebrew text are
/// written to a terminal only: programs that read a file or a pipe compare and cut paths and
/// numbers, and the marks would stick to them.
class StandardStream : public QFile
{
public:
    explicit StandardStream(FILE* stream);

protected:
    qint64 writeData(const char* data, qint64 size) override;

private:
    bool keepsIsolation_;
};

} // namespace storetools

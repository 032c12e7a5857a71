#pragma once

#include <QFile>

#include <cstdio>

namespace storetools {

/// The standard output or the standard error stream. In a Hebrew text, names are enclosed in
/// invisible direction marks (see isolated()). These marks are written only to a terminal, because
/// a program that reads a file or a pipe would take the marks for parts of paths and numbers.
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

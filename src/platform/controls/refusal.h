#pragma once

#include <QString>

namespace runtime {
class RunTimeError;
}

namespace controls {

/// What a grid tells the user when the store refuses to write, to delete or to read a row: the
/// reason, and where something typed waits to be mended, how to go on.
QString writeRefusal(const runtime::RunTimeError& error);
QString deleteRefusal(const runtime::RunTimeError& error);
QString readRefusal(const runtime::RunTimeError& error);

} // namespace controls

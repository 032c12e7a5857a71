#pragma once

#include <QString>

namespace runtime {
class RunTimeError;
}

namespace controls {

/// These functions return the messages that a grid shows if the store refuses to write, delete or
/// read a row. Each message contains the reason. The message for a refused write also says how to
/// continue.
QString writeRefusal(const runtime::RunTimeError& error);
QString deleteRefusal(const runtime::RunTimeError& error);
QString readRefusal(const runtime::RunTimeError& error);

} // namespace controls

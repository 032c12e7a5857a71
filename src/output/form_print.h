#pragma once

#include "platform/runtime/door.h"

#include <memory>

class QPaintDevice;
class QWidget;

namespace output {

/// Gives the device that a form's image is printed on, or null where there is none. The default is
/// the machine's default printer.
using PrintDeviceDoor = runtime::Door<std::unique_ptr<QPaintDevice>()>;
PrintDeviceDoor& printDeviceDoor();

/// Prints the image of a form in its size on the screen, made smaller where the paper is narrower.
/// Reports nothing: without a printer, or with one that fails, nothing happens.
void printForm(QWidget& form) noexcept;

} // namespace output

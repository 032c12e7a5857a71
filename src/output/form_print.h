#pragma once

#include "platform/runtime/door.h"

#include <memory>

class QPaintDevice;
class QWidget;

namespace output {

/// Replaceable function that returns the device on which a form's image is printed, or nullptr if
/// there is none. The default function returns the system's default printer.
using PrintDeviceDoor = runtime::Door<std::unique_ptr<QPaintDevice>()>;
PrintDeviceDoor& printDeviceDoor();

/// Prints the image of a form in its screen size, reduced if the paper is narrower. Without a
/// printer, or if printing fails, nothing happens.
void printForm(QWidget& form) noexcept;

} // namespace output

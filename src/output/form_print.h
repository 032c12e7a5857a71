#pragma once

#include "platform/runtime/door.h"

#include <memory>

class QPaintDevice;
class QWidget;

namespace output {

/// Replaceable function that returns the device on which the image of a form is printed, or nullptr
/// if there is no such device. The default function returns the system's default printer.
using PrintDeviceDoor = runtime::Door<std::unique_ptr<QPaintDevice>()>;
PrintDeviceDoor& printDeviceDoor();

/// Prints an image of the form in the form's screen size. The image is reduced if the paper is
/// narrower. If there is no printer or printing fails, the function does nothing.
void printForm(QWidget& form) noexcept;

} // namespace output

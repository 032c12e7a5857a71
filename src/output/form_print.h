#pragma once

#include <functional>
#include <memory>

class QPaintDevice;
class QWidget;

namespace output {

/// Gives the device that a form's image is printed on, or null where there is none. The default is
/// the machine's default printer.
using PrintDeviceDoor = std::function<std::unique_ptr<QPaintDevice>()>;

/// Replaces the door and returns the former one.
PrintDeviceDoor setPrintDeviceDoor(PrintDeviceDoor door);

/// Prints the image of a form in its size on the screen, made smaller where the paper is narrower.
/// Reports nothing: without a printer, or with one that fails, nothing happens.
void printForm(QWidget& form) noexcept;

} // namespace output

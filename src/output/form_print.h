#pragma once

#include <functional>
#include <memory>

class QPaintDevice;
class QWidget;

namespace output {

/// Returns the device on which a form's image is printed, or nullptr if there is none. The default
/// function returns the system's default printer.
using PrintDeviceDoor = std::function<std::unique_ptr<QPaintDevice>()>;

/// Replaces the function and returns the previous one.
PrintDeviceDoor setPrintDeviceDoor(PrintDeviceDoor door);

/// Prints the image of a form in its screen size, reduced if the paper is narrower. Without a
/// printer, or if printing fails, nothing happens.
void printForm(QWidget& form) noexcept;

} // namespace output

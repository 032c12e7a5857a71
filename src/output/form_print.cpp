#include "output/form_print.h"

#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QWidget>

#include <algorithm>

namespace output {

namespace {

/// Maximum resolution of a printed form, in dots per inch. A form is printed as an image, so a
/// higher resolution would only use more memory.
constexpr int finest = 600;

std::unique_ptr<QPaintDevice> defaultPrinter()
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    if (printer.isNull())
        return nullptr;
    auto device = std::make_unique<QPrinter>(printer, QPrinter::HighResolution);
    device->setResolution(std::min(device->resolution(), finest));
    return device;
}

void paintForm(QWidget& form, QPaintDevice& device)
{
    QPainter painter(&device);
    if (!painter.isActive())
        return;
    const double sameSize = double(device.logicalDpiX()) / form.logicalDpiX();
    const double wholeWidth = double(device.width()) / form.width();
    const double scale = std::min(sameSize, wholeWidth);
    painter.scale(scale, scale);
    form.render(&painter);
}

} // namespace

PrintDeviceDoor& printDeviceDoor()
{
    static PrintDeviceDoor door(defaultPrinter);
    return door;
}

void printForm(QWidget& form) noexcept
{
    try {
        if (const std::unique_ptr<QPaintDevice> device = printDeviceDoor()())
            paintForm(form, *device);
    } catch (...) {
        // Printing errors are ignored, because the form is still visible on the screen.
        return;
    }
}

} // namespace output

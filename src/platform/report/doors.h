#pragma once

#include "platform/report/pagination.h"

#include <QString>

#include <functional>

class QPrinter;
class QWidget;

/// The preview's requests to the desktop, each behind a function that tests can replace. The
/// default dialogs write no settings file.
namespace report {

/// Returns the paper on which a report is laid out when it is shown: the default printer's paper,
/// or A4 portrait without a printer.
Paper defaultPaper();
using PaperDoor = std::function<Paper()>;
PaperDoor setPaperDoor(PaperDoor door);

/// Lets the user choose the printer and the pages. Returns false if the user cancels.
bool askPrinter(QPrinter& printer, QWidget* parent, int pageCount);
using PrinterDoor = std::function<bool(QPrinter& printer, QWidget* parent, int pageCount)>;
PrinterDoor setPrinterDoor(PrinterDoor door);

struct FileRequest
{
    QWidget* parent;
    QString title;
    QString proposedName; ///< Default file name with suffix, without a folder.
    QString filter;       ///< Filter in the syntax of QFileDialog.
    QString suffix;       ///< Suffix that is appended to a name typed without one; without the dot.
};

/// Lets the user choose a file to write. Returns an empty text if the user cancels.
QString askFile(const FileRequest& request);
using FileDoor = std::function<QString(const FileRequest& request)>;
FileDoor setFileDoor(FileDoor door);

} // namespace report

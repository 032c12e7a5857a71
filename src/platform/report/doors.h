#pragma once

#include "platform/report/pagination.h"

#include <QString>

#include <functional>

class QPrinter;
class QWidget;

/// What the preview asks of the desktop, each behind a door that can be replaced. The dialogs that
/// stand behind them at first write no settings file.
namespace report {

/// The paper that a report is laid on when it is shown: the default printer's, A4 upright without
/// one.
Paper defaultPaper();
using PaperDoor = std::function<Paper()>;
PaperDoor setPaperDoor(PaperDoor door);

/// Lets the user choose printer and pages; false where the user thinks better of it.
bool askPrinter(QPrinter& printer, QWidget* parent, int pageCount);
using PrinterDoor = std::function<bool(QPrinter& printer, QWidget* parent, int pageCount)>;
PrinterDoor setPrinterDoor(PrinterDoor door);

struct FileRequest
{
    QWidget* parent;
    QString title;
    QString proposedName; ///< With its suffix, without a folder.
    QString filter;       ///< As a file dialog takes it.
    QString suffix;       ///< Of a name that is typed without one; without the dot.
};

/// Lets the user choose a file to write; empty where the user thinks better of it.
QString askFile(const FileRequest& request);
using FileDoor = std::function<QString(const FileRequest& request)>;
FileDoor setFileDoor(FileDoor door);

} // namespace report

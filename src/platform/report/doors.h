#pragma once

#include "platform/report/pagination.h"
#include "platform/runtime/door.h"

#include <QString>

class QPrinter;
class QWidget;

/// Functions with which the preview uses the desktop: printers, file dialogs and the file manager.
/// Tests can replace each function. The default dialogs write no settings file.
namespace report {

/// Returns the paper for which a report is laid out when it is shown. It is the paper of the
/// default printer, or A4 portrait if there is no printer.
Paper defaultPaper();
using PaperDoor = runtime::Door<Paper()>;
PaperDoor& paperDoor();

/// Returns true if the computer has a printer.
bool hasPrinter();
using HasPrinterDoor = runtime::Door<bool()>;
HasPrinterDoor& hasPrinterDoor();

/// Lets the user choose the printer and the pages. If there is no printer, shows a message box.
/// Returns false if the user cancels or there is no printer.
bool askPrinter(QPrinter& printer, QWidget* parent, int pageCount);
using PrinterDoor = runtime::Door<bool(QPrinter& printer, QWidget* parent, int pageCount)>;
PrinterDoor& printerDoor();

struct FileRequest
{
    QWidget* parent;
    QString title;
    QString proposedName; ///< Default file name with suffix, without a folder.
    QString filter;       ///< Filter in the syntax of QFileDialog.
    QString suffix;       ///< Suffix that is appended to a name typed without one; without the dot.
};

/// Lets the user choose the file to be written. Returns an empty text if the user cancels.
QString askFile(const FileRequest& request);
using FileDoor = runtime::Door<QString(const FileRequest& request)>;
FileDoor& fileDoor();

/// Shows a folder in the desktop's file manager.
void openFolder(const QString& folder);
using FolderDoor = runtime::Door<void(const QString& folder)>;
FolderDoor& folderDoor();

} // namespace report

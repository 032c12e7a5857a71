#include "platform/report/doors.h"

#include "platform/report/printing.h"

#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>

#include <utility>

namespace report {

using namespace Qt::StringLiterals;

namespace {

Paper paperOfDefaultPrinter()
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    return printer.isNull() ? a4Portrait : paperOf(QPrinter(printer).pageLayout());
}

/// The toolkit's dialogs write their history to a settings file of the user's when they close. The
/// program leaves no file outside its folder, so these settings get a place in which no file can be
/// made. Where they are no file, as on Windows, this changes nothing.
void keepNoDialogHistory()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QProcess::nullDevice());
}

bool showPrintDialog(QPrinter& printer, QWidget* parent, int pageCount)
{
    keepNoDialogHistory(); // the dialog has a button that opens a file dialog
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(u"הדפסה"_s);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setMinMax(1, pageCount);
    return dialog.exec() == QDialog::Accepted;
}

QString showFileDialog(const FileRequest& request)
{
    keepNoDialogHistory();
    QFileDialog dialog(request.parent, request.title,
                       QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                       request.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(request.suffix);
    dialog.selectFile(request.proposedName);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

PaperDoor& paperDoor()
{
    static PaperDoor door = paperOfDefaultPrinter;
    return door;
}

PrinterDoor& printerDoor()
{
    static PrinterDoor door = showPrintDialog;
    return door;
}

FileDoor& fileDoor()
{
    static FileDoor door = showFileDialog;
    return door;
}

} // namespace

Paper defaultPaper()
{
    return paperDoor()();
}

PaperDoor setPaperDoor(PaperDoor door)
{
    return std::exchange(paperDoor(), std::move(door));
}

bool askPrinter(QPrinter& printer, QWidget* parent, int pageCount)
{
    return printerDoor()(printer, parent, pageCount);
}

PrinterDoor setPrinterDoor(PrinterDoor door)
{
    return std::exchange(printerDoor(), std::move(door));
}

QString askFile(const FileRequest& request)
{
    return fileDoor()(request);
}

FileDoor setFileDoor(FileDoor door)
{
    return std::exchange(fileDoor(), std::move(door));
}

} // namespace report

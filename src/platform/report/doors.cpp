#include "platform/report/doors.h"

#include "platform/report/paper.h"

#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>

namespace report {

using namespace Qt::StringLiterals;

namespace {

Paper paperOfDefaultPrinter()
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    return printer.isNull() ? a4Portrait : paperOf(QPrinter(printer).pageLayout());
}

/// Qt's dialogs write their history to a settings file of the user when they close. The program
/// must not create files outside its folder. A settings path below the null device makes it
/// impossible to create the file. On Windows, where settings are not a file, this has no effect.
void keepNoDialogHistory()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QProcess::nullDevice());
}

bool showPrintDialog(QPrinter& printer, QWidget* parent, int pageCount)
{
    keepNoDialogHistory(); // The print dialog has a button that opens a file dialog.
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

} // namespace

PaperDoor& paperDoor()
{
    static PaperDoor door(paperOfDefaultPrinter);
    return door;
}

Paper defaultPaper()
{
    return paperDoor()();
}

PrinterDoor& printerDoor()
{
    static PrinterDoor door(showPrintDialog);
    return door;
}

bool askPrinter(QPrinter& printer, QWidget* parent, int pageCount)
{
    return printerDoor()(printer, parent, pageCount);
}

FileDoor& fileDoor()
{
    static FileDoor door(showFileDialog);
    return door;
}

QString askFile(const FileRequest& request)
{
    return fileDoor()(request);
}

} // namespace report

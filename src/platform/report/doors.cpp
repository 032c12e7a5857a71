#include "platform/report/doors.h"

#include "platform/report/paper.h"
#include "platform/runtime/message_box.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

namespace report {

using namespace Qt::StringLiterals;

namespace {

Paper paperOfDefaultPrinter()
{
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    return printer.isNull() ? a4Portrait : paperOf(QPrinter(printer).pageLayout());
}

/// Prevents Qt's file dialogs from creating a settings file with their history in the user's home
/// folder. The function sets a path below the null device, where no file can be created. The
/// function has no effect on Windows, where Qt does not store settings in a file.
void keepNoDialogHistory()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QProcess::nullDevice());
}

bool isAnyPrinterInstalled()
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

void showFolder(const QString& folder)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

bool showPrintDialog(QPrinter& printer, QWidget* parent, int pageCount)
{
    if (!hasPrinter()) {
        runtime::MsgBox(u"לא נמצאה מדפסת במחשב זה.\nאפשר לשמור את הדו\"ח כקובץ PDF."_s,
                        runtime::refusalFlags, u"הדפסה"_s);
        return false;
    }
    keepNoDialogHistory(); // The print dialog has a button that opens a file dialog.
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(u"הדפסה"_s);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setMinMax(1, pageCount);
    return dialog.exec() == QDialog::Accepted;
}

/// Makes a dialog show the names of files and folders left-to-right, also on a right-to-left
/// desktop.
void readLeftToRight(QFileDialog& dialog)
{
    for (const QString& name :
         {u"fileNameEdit"_s, u"lookInCombo"_s, u"listView"_s, u"treeView"_s, u"sidebar"_s}) {
        if (auto* part = dialog.findChild<QWidget*>(name))
            part->setLayoutDirection(Qt::LeftToRight);
    }
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
    readLeftToRight(dialog);
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

HasPrinterDoor& hasPrinterDoor()
{
    static HasPrinterDoor door(isAnyPrinterInstalled);
    return door;
}

bool hasPrinter()
{
    return hasPrinterDoor()();
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

FolderDoor& folderDoor()
{
    static FolderDoor door(showFolder);
    return door;
}

void openFolder(const QString& folder)
{
    folderDoor()(folder);
}

} // namespace report

#include "platform/report/printing.h"

#include "platform/report/doors.h"
#include "platform/report/export.h"
#include "platform/report/paper.h"
#include "platform/report/work_progress.h"
#include "platform/runtime/direction_marks.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "platform/runtime/twips.h"

#include <QIODevice>
#include <QPainter>
#include <QPrinter>

#include <algorithm>

namespace report {

using namespace Qt::StringLiterals;

namespace {

void refuse(const QString& text)
{
    runtime::MsgBox(text, runtime::refusalFlags);
}

/// Returns the pages chosen in the print dialog, counted from 0, in printing order.
std::vector<int> chosenPages(const QPrinter& printer, int pageCount, int currentPage)
{
    int first = 1;
    int last = pageCount;
    if (printer.printRange() == QPrinter::CurrentPage) {
        first = last = std::min(currentPage, pageCount);
    } else if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = printer.fromPage();
        last = std::min(printer.toPage(), pageCount);
    }
    std::vector<int> once;
    for (int page = first; page <= last; ++page)
        once.push_back(page - 1);
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(once.begin(), once.end());
    std::vector<int> pages;
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    for (int copy = 0; copy < copies; ++copy)
        pages.insert(pages.end(), once.begin(), once.end());
    return pages;
}

Outcome drawOnPrinter(PrintedDocument& document, const std::vector<int>& pages, QPrinter& printer,
                      WorkProgress& progress)
{
    QPainter painter;
    if (!painter.begin(&printer))
        return Outcome::Failed;
    const double scale = double(printer.resolution()) / runtime::twipsPerInch;
    painter.scale(scale, scale);
    const int total = static_cast<int>(pages.size());
    for (int i = 0; i < total; ++i) {
        if (i > 0 && !printer.newPage())
            return Outcome::Failed;
        document.paintPage(pages[static_cast<std::size_t>(i)], painter);
        if (!progress.report(i + 1, total)) {
            printer.abort();
            return Outcome::Cancelled;
        }
    }
    return painter.end() ? Outcome::Done : Outcome::Failed;
}

Outcome print(PrintedDocument& document, const std::vector<int>& pages, QPrinter& printer,
              QWidget* parent)
{
    WorkProgress progress(parent, u"מדפיס..."_s);
    if (printer.outputFileName().isEmpty())
        return drawOnPrinter(document, pages, printer, progress);
    return writeFile(printer.outputFileName(), [&](QIODevice& device) {
        return writePdf(document, pages, device,
                        [&](int done, int total) { return progress.report(done, total); });
    });
}

/// Returns the document laid out on the paper, or nullptr if the contents do not fit on the paper.
std::unique_ptr<PrintedDocument> laidOn(PrintedDocument& document, Paper paper)
{
    try {
        return document.onPaper(paper);
    } catch (const runtime::RunTimeError&) {
        return nullptr;
    }
}

FileRequest requestFor(const PrintedDocument& document, Format format, QWidget* parent)
{
    const QString name = document.title();
    switch (format) {
    case Format::Pdf:
        return {parent, u"שמירה כ-PDF"_s, name + u".pdf"_s, u"PDF (*.pdf)"_s, u"pdf"_s};
    case Format::Html:
        return {parent, u"שמירה כ-HTML"_s, name + u".html"_s, u"HTML (*.html)"_s, u"html"_s};
    case Format::Text:
        break;
    }
    return {parent, u"שמירה כטקסט"_s, name + u".txt"_s, u"טקסט (*.txt)"_s, u"txt"_s};
}

Outcome write(Document& document, Format format, QIODevice& device, const Progress& progress)
{
    switch (format) {
    case Format::Pdf:
        return writePdf(document, allPages(document), device, progress);
    case Format::Html:
        return writeHtml(document, device, progress);
    case Format::Text:
        break;
    }
    return writeText(document, device, progress);
}

using ProgressWriter = std::function<Outcome(QIODevice& device, const Progress& progress)>;

Outcome writeTo(const QString& path, QWidget* parent, const ProgressWriter& writer)
{
    WorkProgress progress(parent, u"שומר..."_s);
    return writeFile(path, [&](QIODevice& device) {
        return writer(device, [&](int done, int total) { return progress.report(done, total); });
    });
}

/// Lets the user choose a file. Then calls `writer`, which writes the document to the file. Returns
/// the path of the written file, or an empty text if no file was written.
QString saveAs(PrintedDocument& document, const FileRequest& request, const ProgressWriter& writer)
{
    const QString path = askFile(request);
    if (path.isEmpty())
        return {};
    document.readAll(); // The number of pages is final only after readAll.
    const Outcome outcome = writeTo(path, request.parent, writer);
    if (outcome == Outcome::Failed)
        refuse(u"לא ניתן לכתוב את הקובץ:\n%1"_s.arg(runtime::leftToRight(path)));
    return outcome == Outcome::Done ? path : QString();
}

} // namespace

void printDocument(PrintedDocument& document, int currentPage, QWidget* parent)
{
    // All rows are read before the print dialog opens, because the dialog shows the number of
    // pages.
    document.readAll();
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(document.title());
    printer.setFullPage(true);
    if (!askPrinter(printer, parent, document.pageCount()))
        return;
    printer.setFullPage(true);
    const Paper paper = paperOf(printer.pageLayout());
    std::unique_ptr<PrintedDocument> anew;
    if (paper != document.paper()) {
        anew = laidOn(document, paper);
        if (anew == nullptr) {
            refuse(u"הדו\"ח אינו נכנס בנייר שנבחר"_s);
            return;
        }
    }
    PrintedDocument& printed = anew == nullptr ? document : *anew;
    const std::vector<int> pages = chosenPages(printer, printed.pageCount(), currentPage);
    if (print(printed, pages, printer, parent) == Outcome::Failed)
        refuse(u"ההדפסה נכשלה"_s);
}

QString exportDocument(Document& document, Format format, QWidget* parent)
{
    return saveAs(document, requestFor(document, format, parent),
                  [&](QIODevice& device, const Progress& progress) {
                      return write(document, format, device, progress);
                  });
}

QString exportPdf(PrintedDocument& document, QWidget* parent)
{
    return saveAs(document, requestFor(document, Format::Pdf, parent),
                  [&](QIODevice& device, const Progress& progress) {
                      return writePdf(document, allPages(document), device, progress);
                  });
}

QString exportData(PrintedDocument& document, const QString& name, const QByteArray& data,
                   QWidget* parent)
{
    const QString suffix = name.section(u'.', -1);
    const FileRequest request{parent, u"שמירת נתונים"_s, name,
                              u"%1 (*.%2)"_s.arg(suffix.toUpper(), suffix), suffix};
    return saveAs(document, request, [&](QIODevice& device, const Progress&) {
        return device.write(data) == data.size() ? Outcome::Done : Outcome::Failed;
    });
}

} // namespace report

#pragma once

#include "platform/report/document.h"

class QPrinter;
class QWidget;

namespace report {

/// Lets the user choose a printer and prints the chosen pages. If the chosen paper differs from the
/// document's paper, the pages are laid out again. If the user prints to a file, the pages are
/// written as in a PDF export. Failures of printing are shown in a message box. Throws any error of
/// reading.
void printDocument(PrintedDocument& document, int currentPage, QWidget* parent);

enum class Format { Pdf, Html, Text };

/// Lets the user choose a file and writes the document to it. Failures of writing are shown in a
/// message box. Returns the path of the written file, or an empty text if no file was written.
/// Throws any error of reading.
QString exportDocument(Document& document, Format format, QWidget* parent);
/// Lets the user choose a PDF file and writes the document to it, in the same way as
/// exportDocument. The document may be of any kind, not only a report.
QString exportPdf(PrintedDocument& document, QWidget* parent);
/// Lets the user choose a file and writes `data` to it, in the same way as exportDocument. `data`
/// is the contents of the document in a data format such as CSV or JSON. `name` is the proposed
/// file name with its suffix.
QString exportData(PrintedDocument& document, const QString& name, const QByteArray& data,
                   QWidget* parent);

} // namespace report

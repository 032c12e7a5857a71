#pragma once

#include "platform/report/document.h"

class QPrinter;
class QWidget;

namespace report {

/// Lets the user choose a printer and prints the chosen pages. If the chosen paper differs from the
/// document's, the pages are laid out again. Printing to a file works like an export. Failures of
/// printing are shown in a message box. Throws any error of reading.
void printDocument(PrintedDocument& document, int currentPage, QWidget* parent);

enum class Format { Pdf, Html, Text };

/// Lets the user choose a file and writes the document to it. Failures of writing are shown in a
/// message box. Returns the path of the written file, or an empty text if none was written. Throws
/// any error of reading.
QString exportDocument(Document& document, Format format, QWidget* parent);
/// Does the same for a document that is not a report. It can be saved as PDF only.
QString exportPdf(PrintedDocument& document, QWidget* parent);
/// Does the same with the document's data. `name` is the proposed file name with its suffix.
QString exportData(PrintedDocument& document, const QString& name, const QByteArray& data,
                   QWidget* parent);

} // namespace report

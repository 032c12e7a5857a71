#pragma once

#include "platform/report/document.h"

class QPrinter;
class QWidget;

namespace report {

/// Lets the user choose a printer and prints the chosen pages. If the chosen paper differs from the
/// document's, the pages are laid out again. Printing to a file works like an export. Failures of
/// printing are shown in a message box. Throws any error of reading.
void printDocument(Document& document, int currentPage, QWidget* parent);

enum class Format { Pdf, Html, Text };

/// Lets the user choose a file and writes the document to it. Failures of writing are shown in a
/// message box. Returns the path of the written file, or an empty text if none was written. Throws
/// any error of reading.
QString exportDocument(Document& document, Format format, QWidget* parent);

} // namespace report

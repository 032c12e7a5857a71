#pragma once

#include "platform/report/document.h"

class QPrinter;
class QWidget;

namespace report {

/// Asks for a printer and prints what the user chose there. A paper other than the document's has
/// the pages laid anew; a file that the user chose is written as an export is. Refusals are shown.
/// Raises what reading raises.
void printDocument(Document& document, int currentPage, QWidget* parent);

enum class Format { Pdf, Html, Text };

/// Asks for a file and writes the document to it. A refusal is shown. Raises what reading raises.
void exportDocument(Document& document, Format format, QWidget* parent);

} // namespace report

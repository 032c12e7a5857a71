#pragma once

#include "platform/report/document.h"

#include <functional>

class QIODevice;

/// Functions that export a report to a file. Each writer function handles one page at a time, so
/// that memory use depends on the size of a page and not on the number of pages. Errors of reading
/// are thrown. Errors of writing are returned as Outcome::Failed.
namespace report {

enum class Outcome { Done, Cancelled, Failed };

/// Function that is called after each page with the number of finished pages and the number of all
/// pages. If the function returns false, the export is cancelled.
using Progress = std::function<bool(int done, int total)>;

/// Writes the given pages to a PDF file in the given order. Page indexes are counted from 0.
Outcome writePdf(PrintedDocument& document, const std::vector<int>& pages, QIODevice& device,
                 const Progress& progress);

/// Writes the report as one self-contained right-to-left HTML page with embedded pictures. The HTML
/// page contains the page header once and then every row in its printed layout.
Outcome writeHtml(Document& document, QIODevice& device, const Progress& progress);

/// Writes the report as plain UTF-8 text. The text contains the page header once and then one group
/// of lines per row, separated by empty lines. Controls that are side by side on paper share one
/// line. They are ordered from right to left and separated by tabs. Line breaks and tabs inside a
/// control's text are replaced by spaces.
Outcome writeText(Document& document, QIODevice& device, const Progress& progress);

using Writer = std::function<Outcome(QIODevice& device)>;

/// Calls `writer`, which writes the contents to a temporary file in the folder of the target file.
/// Then replaces the target file by the temporary file. If the outcome is not Done, the target file
/// stays unchanged and the temporary file is removed.
Outcome writeFile(const QString& path, const Writer& writer);

/// Returns the indexes of all pages of a document.
std::vector<int> allPages(const PrintedDocument& document);

} // namespace report

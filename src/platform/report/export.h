#pragma once

#include "platform/report/document.h"

#include <functional>

class QIODevice;

/// The export of a report to a file. Each writer handles one page at a time, so that memory use
/// depends on the size of a page and not on the number of pages. Errors of reading are thrown;
/// errors of writing are returned as Outcome::Failed.
namespace report {

enum class Outcome { Done, Cancelled, Failed };

/// Callback after each page with the number of finished pages and of all pages. Returning false
/// cancels the export.
using Progress = std::function<bool(int done, int total)>;

/// Writes the given pages, counted from 0, in the given order.
Outcome writePdf(PrintedDocument& document, const std::vector<int>& pages, QIODevice& device,
                 const Progress& progress);

/// Writes one self-contained right-to-left HTML page with embedded pictures. It contains the page
/// header once and then every block in its printed layout.
Outcome writeHtml(Document& document, QIODevice& device, const Progress& progress);

/// Writes plain UTF-8 text. It contains the page header once and then one group of lines per row,
/// separated by empty lines. Controls that are side by side on paper share one line; they are
/// ordered from right to left and separated by tabs. Line breaks and tabs inside a text are
/// replaced by spaces.
Outcome writeText(Document& document, QIODevice& device, const Progress& progress);

using Writer = std::function<Outcome(QIODevice& device)>;

/// Runs the writer on a temporary file in the target folder and then replaces the target by it.
/// Unless the outcome is Done, the target is unchanged and the temporary file is removed.
Outcome writeFile(const QString& path, const Writer& writer);

/// Returns the indexes of all pages of a document.
std::vector<int> allPages(const PrintedDocument& document);

} // namespace report

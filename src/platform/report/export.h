#pragma once

#include "platform/report/document.h"

#include <functional>

class QIODevice;

/// A report as a file. Each writer goes page by page, so that memory grows with the page and not
/// with the report. Reading failures are raised; writing failures are outcomes.
namespace report {

enum class Outcome { Done, Cancelled, Failed };

/// Told after each page how many of how many are done; false cancels what is under way.
using Progress = std::function<bool(int done, int total)>;

/// The pages, from 0, in their order.
Outcome writePdf(Document& document, const std::vector<int>& pages, QIODevice& device,
                 const Progress& progress);

/// One self-contained page, right-to-left, pictures inlined: the page header once, then every
/// block as it lies on paper.
Outcome writeHtml(Document& document, QIODevice& device, const Progress& progress);

/// Plain UTF-8: the page header once, then one block of text lines per row, an empty line between
/// them. What stands side by side on paper stands on one line, from right to left, parted by tabs;
/// line breaks and tabs within a text become blanks.
Outcome writeText(Document& document, QIODevice& device, const Progress& progress);

using Writer = std::function<Outcome(QIODevice& device)>;

/// Runs the writer over a new file beside the path, which takes the path's place at the end. Unless
/// the outcome is Done, what was there before stands untouched and nothing is left behind.
Outcome writeFile(const QString& path, const Writer& writer);

/// All pages of a document.
std::vector<int> allPages(const Document& document);

} // namespace report

#pragma once

#include "platform/report/export.h"

#include <optional>

namespace report {

/// The place of a search hit: the index of the page, and the index of the control among all
/// controls of the page.
struct Hit
{
    int page;
    int control;
    QRect place; ///< Bounding box in twips from the top left corner of the sheet.
};

enum class SearchDirection { Forward, Backward };

/// Searches the texts of all pages, ignoring case. The search starts after (or, backwards, before)
/// the control of `from`, or at `startPage` without `from`, and wraps around at the end. Returns
/// nothing if no text matches, the search text is empty or the progress callback cancels. Throws
/// any error of reading.
std::optional<Hit> findText(PrintedDocument& document, const QString& text,
                            SearchDirection direction, const std::optional<Hit>& from,
                            int startPage, const Progress& progress);

} // namespace report

#pragma once

#include "platform/report/export.h"

#include <optional>

namespace report {

/// The position of a search hit: the index of the page, and the index of the control among all
/// controls of that page.
struct Hit
{
    int page;
    int control;
    QRect place; ///< Bounding box in twips from the top left corner of the sheet.
};

enum class SearchDirection { Forward, Backward };

/// Searches the texts of all pages, ignoring case. A forward search starts after the control of the
/// hit `from`, and a backward search before it. If `from` is empty, the search starts at the page
/// `startPage`. At the end of the document, the search continues at the opposite end. Returns
/// nothing if no text matches, if the search text is empty or if `progress` returns false because
/// the user cancels. Throws any error of reading.
std::optional<Hit> findText(PrintedDocument& document, const QString& text,
                            SearchDirection direction, const std::optional<Hit>& from,
                            int startPage, const Progress& progress);

} // namespace report

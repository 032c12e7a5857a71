#pragma once

#include "platform/report/export.h"

#include <optional>

namespace report {

/// Where a text stands: the page, and the control on it counted through its bands.
struct Hit
{
    int page;
    int control;
    QRect place; ///< Twips from the corner of the sheet.
};

enum class SearchDirection { Forward, Backward };

/// Looks through the pages' texts, upper and lower case alike, from the control behind (or before)
/// `from` on, or from the start of `startPage` where there is none, round the end and back. Nothing
/// where the text stands nowhere, where it is empty or where the progress cancels. Raises what
/// reading raises.
std::optional<Hit> findText(Document& document, const QString& text, SearchDirection direction,
                            const std::optional<Hit>& from, int startPage,
                            const Progress& progress);

} // namespace report

#include "platform/report/search.h"

#include <algorithm>

namespace report {

namespace {

QRect placeOf(const PrintedControl& printed)
{
    const ControlDesign& design = printed.control->design();
    return {printed.corner, QSize(design.width, design.height)};
}

bool isInvisible(QChar character)
{
    return character.category() == QChar::Other_Format;
}

/// Returns true if `printed` contains `text`, ignoring case. Invisible characters in `printed`,
/// such as direction marks between letters, are ignored as well.
bool contains(QString printed, const QString& text)
{
    if (printed.contains(text, Qt::CaseInsensitive))
        return true;
    return std::any_of(printed.cbegin(), printed.cend(), isInvisible) &&
           printed.removeIf(isInvisible).contains(text, Qt::CaseInsensitive);
}

std::vector<Hit> hitsOn(const Page& page, const QString& text)
{
    std::vector<Hit> hits;
    int counted = 0;
    for (const Band& band : page.bands) {
        for (const PrintedControl& printed : band.controls) {
            if (contains(printed.text, text))
                hits.push_back({page.index, counted, placeOf(printed)});
            ++counted;
        }
    }
    return hits;
}

/// Returns the first search hit of a page in the search direction. `beyond` is the index of a
/// control. If it is given, a forward search returns only a hit in a later control, and a backward
/// search only a hit in an earlier control.
std::optional<Hit> nearest(const std::vector<Hit>& hits, SearchDirection direction,
                           std::optional<int> beyond)
{
    if (direction == SearchDirection::Forward) {
        const auto found = std::find_if(hits.begin(), hits.end(), [&](const Hit& hit) {
            return !beyond || hit.control > *beyond;
        });
        return found == hits.end() ? std::nullopt : std::optional(*found);
    }
    const auto found = std::find_if(hits.rbegin(), hits.rend(), [&](const Hit& hit) {
        return !beyond || hit.control < *beyond;
    });
    return found == hits.rend() ? std::nullopt : std::optional(*found);
}

} // namespace

std::optional<Hit> findText(PrintedDocument& document, const QString& text,
                            SearchDirection direction, const std::optional<Hit>& from,
                            int startPage, const Progress& progress)
{
    if (text.isEmpty())
        return std::nullopt;
    const int pages = document.pageCount();
    const int step = direction == SearchDirection::Forward ? 1 : pages - 1;
    int page = from ? from->page : startPage;
    // A search that starts in the middle of a page searches this page again at the end. Otherwise a
    // forward search would miss the hits before its starting point, and a backward search would
    // miss the hits after its starting point.
    for (int i = 0; i <= pages; ++i) {
        const std::optional<int> beyond =
            i == 0 && from ? std::optional(from->control) : std::nullopt;
        if (const auto hit = nearest(hitsOn(*document.page(page), text), direction, beyond))
            return hit;
        if (!progress(i, pages))
            return std::nullopt;
        page = (page + step) % pages;
    }
    return std::nullopt;
}

} // namespace report

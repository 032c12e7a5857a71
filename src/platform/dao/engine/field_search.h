#pragma once

#include <QString>

#include <algorithm>
#include <vector>

namespace dao {

/// Returns the position of the first element of a list whose name equals `name` regardless of case,
/// or -1 if there is none.
template <typename Named>
int ordinalOf(const std::vector<Named>& all, const QString& name)
{
    const auto found = std::ranges::find_if(all, [&name](const Named& each) {
        return each.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

} // namespace dao

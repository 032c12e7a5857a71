#pragma once

#include "platform/dao/engine/types.h"

#include <algorithm>

namespace dao {

/// Returns the position of the field with this name, ignoring case, or -1 if there is none.
inline int ordinalOf(const std::vector<FieldInfo>& fields, const QString& name)
{
    const auto found = std::ranges::find_if(fields, [&name](const FieldInfo& each) {
        return each.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

} // namespace dao

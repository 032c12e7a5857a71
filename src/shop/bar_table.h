#pragma once

#include "shop/bar_settings.h"

namespace dao {
class Database;
}

namespace shop {

/// Reads the settings from the store's table zomrel_bars. Returns none if the store lacks the
/// table. Throws UnrecognizedFormat (3343) if the table lacks a field or a field has the wrong
/// type, and DataTypeConversion (3421) for a row with an unknown part or with a number that is
/// missing or out of range.
SettingsByGroup readBarTable(dao::Database& database);

/// Writes the settings of these groups to the store at the path, in one transaction, and does not
/// change the settings of other groups. Creates the table if it is missing. Throws like
/// readBarTable and any error of the engine. On a server, a station cannot create the table.
void writeBarTable(const QString& path, const SettingsByGroup& settings);

} // namespace shop

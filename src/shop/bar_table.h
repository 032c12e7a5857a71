#pragma once

#include "shop/bar_settings.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace shop {

/// Reads the settings from the store's table zomrel_bars. Returns none if the store lacks the
/// table. Throws UnrecognizedFormat (3343) if the table has other fields or indexes than it should,
/// and DataTypeConversion (3421) for a row with an unknown part or with a number that is
/// missing or out of range.
SettingsByGroup readBarTable(dao::Database& database);

/// Writes the settings of these groups to the store at the path, in one transaction, and does not
/// change the settings of other groups. Creates the table if it is missing. Throws like
/// readBarTable for another structure, DataTypeConversion (3421) for invalid settings, and any
/// error of the engine. Invalid rows are no error: the settings replace those of their groups, and
/// rows with an unknown part are deleted. On a server, a station cannot create the table.
void writeBarTable(const QString& path, const SettingsByGroup& settings);

/// Returns one text for each row of the table that readBarTable refuses. The table must exist with
/// its fields. Throws any error of the engine.
QStringList barTableFindings(dao::Database& database);

} // namespace shop

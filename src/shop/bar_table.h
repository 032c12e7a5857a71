#pragma once

#include "shop/bar_settings.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace shop {

/// Reads the settings of bars from the store's table zomrel_bars. Returns an empty map if the store
/// does not have the table. Throws UnrecognizedFormat (3343) if the table does not have the
/// expected fields and indexes. Throws DataTypeConversion (3421) if a row has an unknown part, or a
/// number that is missing or out of range.
SettingsByGroup readBarTable(dao::Database& database);

/// Writes the settings of the given groups to the store at the path, in one transaction, and does
/// not change the settings of other groups. Creates the table zomrel_bars if it is missing. On a
/// server, a station cannot create the table. Throws UnrecognizedFormat (3343) if the table does
/// not have the expected fields and indexes, DataTypeConversion (3421) for invalid settings, and
/// any error of the engine. Invalid rows in the table cause no error: the given settings replace
/// the invalid rows of their groups, and rows with an unknown part are deleted.
void writeBarTable(const QString& path, const SettingsByGroup& settings);

/// Returns one text for each row of the table zomrel_bars that contains an invalid value. The table
/// must exist and have the expected fields. Throws any error of the engine.
QStringList barTableFindings(dao::Database& database);

} // namespace shop

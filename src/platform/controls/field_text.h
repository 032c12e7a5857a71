#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace dao {
class Recordset;
} // namespace dao

namespace controls {

/// Formats a field's value for grids and combos: empty for Null, a date in the short format, a
/// number with `decimals` decimal places. If `decimals` is -1, a number is formatted by
/// runtime::toText.
QString fieldText(const QVariant& value, int decimals = -1);

/// Returns the texts of one field for all rows, in the recordset's order, without moving its
/// current row. Throws ItemNotFound (3265) for an unknown field, and any error of reading.
QStringList fieldTexts(dao::Recordset& rows, const QString& field);

/// Returns true if the text contains a right-to-left letter. Such a text reads right-to-left as a
/// whole, even if it starts with a number.
bool readsRightToLeft(const QString& text);

} // namespace controls

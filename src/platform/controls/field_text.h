#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace dao {
class Recordset;
} // namespace dao

namespace controls {

/// Returns a field's value as text for grids and combo boxes. A Null becomes an empty text, a date
/// has the short format, and a number has `decimals` decimal places. If `decimals` is -1,
/// runtime::toText formats the number.
QString fieldText(const QVariant& value, int decimals = -1);

/// Returns the texts of one field for all rows, in the order of the recordset. The current row does
/// not change. Throws ItemNotFound (3265) for an unknown field, and any error of reading.
QStringList fieldTexts(dao::Recordset& rows, const QString& field);

/// Returns true if the text contains a right-to-left letter. Such a text reads right-to-left as a
/// whole, even if it starts with a number.
bool readsRightToLeft(const QString& text);

} // namespace controls

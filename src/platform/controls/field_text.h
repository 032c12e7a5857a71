#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace dao {
class Recordset;
struct FieldInfo;
} // namespace dao

namespace controls {

/// A field's value as grids and combos show it: empty for Null, a date in the short form, a number
/// with `decimals` digits behind the decimal sign, rounded to the nearest, or by the general
/// conversion where `decimals` is -1.
QString fieldText(const QVariant& value, int decimals = -1);

/// The position of a field, -1 where no field has the name (any case).
int ordinalOf(const std::vector<dao::FieldInfo>& fields, const QString& field);

/// One field of all rows in the recordset's order, without moving it. Raises what reading raises;
/// 3265 for an unknown field.
QStringList fieldTexts(dao::Recordset& rows, const QString& field);

/// True where a letter of the text is written from right to left: such a text reads in that
/// direction as a whole, with a number at its front too.
bool readsRightToLeft(const QString& text);

} // namespace controls

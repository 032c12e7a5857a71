#pragma once

#include "platform/dao/engine/types.h"

/// Conversions between stored values (as the engine stores them), field values (as Field::Value
/// returns them) and assigned values (as the program assigns them to a field).
namespace dao {

/// Converts a stored value to a field value. Throws DataTypeConversion (3421) if the contents do
/// not match the declared type, and Overflow (6) for a number outside the type's range.
QVariant fromStored(const FieldInfo& field, const QVariant& stored);

/// Converts an assigned value to the field's type. Throws DataTypeConversion (3421), Overflow (6),
/// and FieldTooSmall (3163) for a text longer than the field.
QVariant converted(const FieldInfo& field, const QVariant& assigned);

/// Converts a field value to its stored form.
QVariant toStored(const FieldInfo& field, const QVariant& value);

/// Returns the value that a field of a new row has before a value is assigned: 0 for a Boolean, and
/// Null for any other type.
QVariant initialValue(const FieldInfo& field);

} // namespace dao

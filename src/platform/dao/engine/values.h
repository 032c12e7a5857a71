#pragma once

#include "platform/dao/engine/types.h"

/// Between what a store holds, what a field's value is and what is assigned to it.
namespace dao {

/// A stored value as the field's value. Throws DataTypeConversion (3421) for contents that the
/// declared type does not take, Overflow (6) for a number beyond it.
QVariant fromStored(const FieldInfo& field, const QVariant& stored);

/// An assigned value converted to the field's type. Throws DataTypeConversion (3421), Overflow (6),
/// FieldTooSmall (3163).
QVariant converted(const FieldInfo& field, const QVariant& assigned);

/// A field's value as it is stored.
QVariant toStored(const FieldInfo& field, const QVariant& value);

/// The value of a field that nothing was assigned to in a new row.
QVariant initialValue(const FieldInfo& field);

} // namespace dao

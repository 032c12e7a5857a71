#pragma once

#include "tools/store/old_store/code_page.h"
#include "tools/store/old_store/old_format.h"

#include <QVariant>

namespace storetools {

/// Decodes the bytes of a value. The result is an int, a double, a text, a QDate (or a QDateTime if
/// there is a time of day), or -1 or 0 for a Boolean. The result is never Null. A value of the type
/// Single becomes the double with the same shortest decimal text. Throws DataTypeConversion (3421)
/// for bytes that are not a value of the type, and for a type that cannot be imported.
QVariant decodedValue(quint8 type, const QByteArray& bytes, OldFormat format,
                      const CodePage& codePage);

/// Decodes the name of a table or a column of an old file for messages to the user. A name that
/// cannot be decoded is returned unchanged.
QString decodedName(const QString& name, OldFormat format, const CodePage& codePage);

} // namespace storetools

#pragma once

#include "tools/store/old_store/code_page.h"
#include "tools/store/old_store/old_format.h"

#include <QVariant>

namespace storetools {

/// A value by its bytes: an int, a double, a text, a QDate (QDateTime where there is a time of
/// day), -1 or 0 for a Boolean; never Null. A Single becomes the number that its shortest decimal
/// text says. Raises 3421 for bytes that are no value of the type, and for a type that cannot be
/// taken over.
QVariant decodedValue(quint8 type, const QByteArray& bytes, OldFormat format,
                      const CodePage& codePage);

/// A name as it is read to the user; one that cannot be decoded stays as it was told.
QString decodedName(const QString& name, OldFormat format, const CodePage& codePage);

} // namespace storetools

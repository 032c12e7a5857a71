#pragma once

#include <QString>
#include <QStringList>

namespace storetools {

/// What is wrong with a store, a line for each finding; empty for one that is sound and complete.
/// A file that cannot be opened is a finding. Changes nothing in the store.
///
/// Looked for: the engine's own findings; missing tables, fields and indexes; fields of another
/// type or size; lines' fields that do not stand at their ordinals; contents that cannot be read by
/// the declared type; texts longer than their field; missing and doubled keys; numbers that the
/// program cannot handle; lines whose order does not exist.
QStringList checkStore(const QString& path);

} // namespace storetools

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace testsupport {
class TemporaryStore;
}

namespace reliability {

/// The series that the stations' lines are made of, with two sashes.
QString seriesOfLines();
void addSeriesOfLines(testsupport::TemporaryStore& store);

/// A stored line's fields by name.
using StoredLine = QMap<QString, QVariant>;

/// All lines of the store.
QList<StoredLine> storedLines(testsupport::TemporaryStore& store);

/// Where the line differs from the one that adding an opening of its own width and height with its
/// own tag stores; empty for a whole line.
QStringList lineFindings(const StoredLine& line);

} // namespace reliability

#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

namespace testsupport {
class PlainSql;
class TemporaryStore;
} // namespace testsupport

namespace reliability {

/// The series that the stations' lines are made of, with two sashes.
QString seriesOfLines();
void addSeriesOfLines(testsupport::TemporaryStore& store);

/// The name that a station puts in a list of kinds or colours for its tag: as long as the field.
QString listedName(const QString& tag);

/// What stands in a store, asked for past the program. The store has to outlive it.
class StoredRows
{
public:
    StoredRows(testsupport::TemporaryStore& store);
    StoredRows(testsupport::PlainSql& store);

    QList<QList<QVariant>> rows(const QString& sql, const QList<QVariant>& values = {}) const;
    /// The first column of the first row; invalid where there is none.
    QVariant scalar(const QString& sql, const QList<QVariant>& values = {}) const;

private:
    std::function<QList<QList<QVariant>>(const QString&, const QList<QVariant>&)> ask_;
};

/// A stored line's fields by name.
using StoredLine = QMap<QString, QVariant>;

/// All lines of the store.
QList<StoredLine> storedLines(const StoredRows& store);

/// Where the line differs from the one that adding an opening of its own width and height with its
/// own tag stores; empty for a whole line.
QStringList lineFindings(const StoredLine& line);

} // namespace reliability

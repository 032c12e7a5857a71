#pragma once

#include <QDate>
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

/// The series with two sashes from which the stations' lines are computed.
QString seriesOfLines();
void addSeriesOfLines(testsupport::TemporaryStore& store);

/// Returns the name that a station enters into a kind or colour list for a tag. The name has the
/// field's maximum length.
QString listedName(const QString& tag);

/// Queries a store directly, without the program. The store must outlive this object.
class StoredRows
{
public:
    StoredRows(testsupport::TemporaryStore& store);
    StoredRows(testsupport::PlainSql& store);

    QList<QList<QVariant>> rows(const QString& sql, const QList<QVariant>& values = {}) const;
    /// Returns the first column of the first row, or an invalid QVariant if there is no row.
    QVariant scalar(const QString& sql, const QList<QVariant>& values = {}) const;

private:
    std::function<QList<QList<QVariant>>(const QString&, const QList<QVariant>&)> ask_;
};

/// The fields of a stored line by name.
using StoredLine = QMap<QString, QVariant>;

/// Returns all lines of the store.
QList<StoredLine> storedLines(const StoredRows& store);

/// The dates on which lines were added.
struct Days
{
    QDate first;
    QDate last;
};

/// Returns yesterday and today, because midnight may pass during a test.
Days recentDays();

/// Compares a line with the expected result for its own width, height and tag, added on one of the
/// days. Returns the differences, or an empty list.
QStringList lineFindings(const StoredLine& line, const Days& days = recentDays());

} // namespace reliability

#pragma once

#include "platform/dao/engine/types.h"

#include <QByteArrayView>

#include <memory>
#include <optional>

namespace dao {

/// The rows of a table in the order in which they were stored, each once.
class RowStream
{
public:
    virtual ~RowStream() = default;
    /// The next row's bytes (see RowWriter), valid until the next call; nothing after the last row.
    /// Throws DataTypeConversion (3421) and Overflow (6) for contents that the declared type does
    /// not take, and FieldTooSmall (3163) for a text longer than its field.
    virtual std::optional<QByteArrayView> next() = 0;
};

/// Takes the rows of a table that was made in the same transaction.
class RowSink
{
public:
    virtual ~RowSink() = default;
    /// Rows are stored in the order in which they are added. A failure may show at a later row.
    virtual void add(QByteArrayView row) = 0;
    /// To be called once after the last row; the rows of a sink without it may be stored or not.
    virtual void finish() = 0;
};

/// What zomrel-store alone asks of an engine: whole stores and whole tables. While a stream or a
/// sink lives, nothing else can be run on its session.
class Bulk
{
public:
    virtual ~Bulk() = default;

    /// What the engine itself finds wrong with the store, a line for each. Reads the whole store.
    virtual QStringList integrityFindings() = 0;
    /// Writes the whole store, as it is at one moment, to the path, in place of what is there; on
    /// the disk when it returns. Other stations may read meanwhile; one that writes waits. The
    /// process may have no other connection to the store. Throws Locked (3260), DiskFull (3026),
    /// DiskOrNetworkError (3043), PermissionDenied (3051), OperationNotSupported (3251).
    virtual void copyTo(const QString& path) = 0;

    /// The number that a counter has reached, 0 for none given yet; empty if the store lacks what
    /// keeps the counter.
    virtual std::optional<qint64> counterMark(const QString& table, const QString& field) = 0;

    virtual std::unique_ptr<RowStream> rowStream(const TableInfo& table) = 0;
    virtual std::unique_ptr<RowSink> rowSink(const TableInfo& table) = 0;
    /// The highest number that a counter is known to have given; 0 for none.
    virtual qint64 highestGiven(const QString& table, const QString& field) = 0;
    /// Lets a counter go on after the number.
    virtual void countOnFrom(const QString& table, const QString& field, qint64 highest) = 0;
    /// Tells the engine that a table has got many rows.
    virtual void analyze(const QString&) {}
    /// Moves tables out of the store and gives the name of the place where they are kept. Throws
    /// OperationNotSupported (3251) for an embedded store.
    virtual QString setAside(const QStringList& tables) = 0;
};

} // namespace dao

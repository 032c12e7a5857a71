#pragma once

#include "platform/dao/database.h"
#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QTemporaryDir>
#include <QVariant>

#include <memory>

namespace controlstest {

/// A store in its own folder with one table, Lines. Its fields are a counter Code, a Name of at
/// most 10 characters, a double Size, a date Day and a LONG Num. The lock wait is very short.
class SampleStore
{
public:
    SampleStore();
    ~SampleStore();
    SampleStore(const SampleStore&) = delete;
    SampleStore& operator=(const SampleStore&) = delete;

    /// Runs SQL that bypasses the engine, like another station.
    QList<QVariantList> sql(const QString& text, const QVariantList& values = {});
    /// Adds a line for each name; Num counts from 1.
    void addLines(const QStringList& names);
    /// Adds this number of lines, named after their Num.
    void addLines(int count);
    /// Returns the names in the order of Code; Null appears as "NULL".
    QStringList names();

    std::shared_ptr<dao::Recordset> table() const;
    std::shared_ptr<dao::Recordset> dynaset() const;

private:
    QString path() const;

    QTemporaryDir folder_;
    std::unique_ptr<testsupport::ThrowawayDatabase> database_; ///< Null for an embedded store.
    std::unique_ptr<testsupport::PlainSql> sql_;
};

} // namespace controlstest

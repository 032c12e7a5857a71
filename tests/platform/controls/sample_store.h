#pragma once

#include "platform/dao/database.h"
#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QTemporaryDir>
#include <QVariant>

#include <memory>

namespace controlstest {

/// A store in a folder of its own with one table, Lines: a counter Code, a Name of at most 10
/// characters, a double Size, a date Day, a LONG Num. Locked rows are waited for a moment only.
class SampleStore
{
public:
    SampleStore();
    ~SampleStore();
    SampleStore(const SampleStore&) = delete;
    SampleStore& operator=(const SampleStore&) = delete;

    /// Runs SQL past the engine, as another station does.
    QList<QVariantList> sql(const QString& text, const QVariantList& values = {});
    /// Adds a line of this name for each; Num counts from 1 on.
    void addLines(const QStringList& names);
    /// Adds so many lines, named by their Num.
    void addLines(int count);
    /// The names in the order of their codes; "NULL" for Null.
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

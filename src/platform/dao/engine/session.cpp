#include "platform/dao/engine/session.h"

#include "platform/dao/engine/field_search.h"
#include "platform/runtime/call_watch.h"

namespace dao {

using namespace Qt::StringLiterals;

int TableInfo::ordinalOf(const QString& fieldName) const
{
    return dao::ordinalOf(fields, fieldName);
}

bool mayChangeSchema(const QString& sql)
{
    for (const auto verb : {"SELECT"_L1, "WITH"_L1, "INSERT"_L1, "UPDATE"_L1, "DELETE"_L1}) {
        if (sql.startsWith(verb))
            return false;
    }
    return true;
}

QString Session::rowNumber(const TableInfo& table) const
{
    if (!table.numbered)
        throw runtime::RunTimeError(
            runtime::UnrecognizedFormat,
            u"Table '%1' in %2 was not made as a store's table: it has no column %3."_s.arg(
                table.name, place(), dialect_.rowNumberColumn()));
    return dialect_.rowNumber(table);
}

qint64 Session::run(const QString& sql, const QVariantList& values)
{
    const runtime::WatchedCall call([this] { return place(); });
    return execute(sql, values).affected;
}

std::vector<StoredValues> Session::rows(const QString& sql, const QVariantList& values)
{
    const runtime::WatchedCall call([this] { return place(); });
    return execute(sql, values).rows;
}

void Session::commit()
{
    run(u"COMMIT"_s);
    inTransaction_ = false;
}

void Session::rollback()
{
    inTransaction_ = false;
    run(u"ROLLBACK"_s);
}

const std::vector<IndexInfo>& Session::indexes(const QString& table)
{
    const auto known = schema().indexes.find(table);
    if (known != schema().indexes.end())
        return known->second;
    std::vector<IndexInfo> read = dialect_.indexesOf(table, rows(dialect_.indexesQuery(), {table}));
    return schema().indexes.emplace(table, std::move(read)).first->second;
}

Transaction::Transaction(Session& session) : session_(session), own_(!session.inTransaction())
{
    if (own_)
        session_.begin();
}

Transaction::~Transaction()
{
    if (!own_)
        return;
    try {
        session_.rollback();
    } catch (const runtime::RunTimeError&) {
        // The engine has already rolled back. The first error is the one to report.
        return;
    }
}

void Transaction::commit()
{
    if (own_)
        session_.commit();
    own_ = false;
}

} // namespace dao

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

void Session::runAll(const QStringList& statements)
{
    for (const QString& each : statements)
        run(each);
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
    if (markToCommit_)
        expectMark(name_, *markToCommit_);
    markToCommit_.reset();
}

void Session::rollback()
{
    inTransaction_ = false;
    markToCommit_.reset();
    run(u"ROLLBACK"_s);
}

StoreMark Session::storedMark()
{
    if (!table(storeMarkTable))
        return {};
    const std::vector<StoredValues> found =
        rows(u"SELECT identity, generation FROM %1"_s.arg(storeMarkTable));
    if (found.empty())
        return {};
    return {found.front()[0].toString(), found.front()[1].toString()};
}

StoreMark Session::expectedMark(const StoreMark& seen) const
{
    return markToCommit_ ? *markToCommit_ : firstSeenMark(name_, seen);
}

void Session::recognise(const StoreMark& stored)
{
    const StoreMark expected = expectedMark(stored);
    if (stored == expected)
        return;
    if (!expected.isEmpty() || !stored.isOfOlderStore())
        throw replacedError();
    expectMark(name_, stored);
}

void Session::storeMark(const StoreMark& mark)
{
    if (!table(storeMarkTable))
        runAll(markTableStatements());
    run("DELETE FROM "_L1 + storeMarkTable);
    run(u"INSERT INTO %1 (identity, generation) VALUES ($1, $2)"_s.arg(storeMarkTable),
        {mark.identity, mark.generation});
    schema().storeMark.reset();
    markToCommit_ = mark;
}

QStringList Session::markTableStatements() const
{
    constexpr int idLength = 36;
    const FieldInfo identity{.name = u"identity"_s, .size = idLength, .required = true};
    const FieldInfo generation{.name = u"generation"_s, .size = idLength, .required = true};
    const auto [before, after] =
        dialect_.createTable({.name = storeMarkTable, .fields = {identity, generation}},
                             {{u"PrimaryKey"_s, {identity.name}, true, true}});
    return before + after;
}

runtime::RunTimeError Session::replacedError() const
{
    return runtime::RunTimeError(
        storeReplaced, u"The store was replaced or restored while the program was working with it. "
                       "Nothing was written. Start the program again. (%1)"_s.arg(place()));
}

TableInfo Session::expectTable(const QString& name)
{
    std::optional<TableInfo> found = table(name);
    if (!found)
        throw runtime::RunTimeError(runtime::TableNotFound);
    return *std::move(found);
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
        // An error of the rollback is ignored, because the error that made the rollback necessary
        // is the one to report. The engine has already rolled back the transaction.
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

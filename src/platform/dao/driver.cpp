#include "platform/dao/driver.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QStringTokenizer>

namespace dao {

using namespace Qt::StringLiterals;

int TableInfo::ordinalOf(const QString& fieldName) const
{
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].name.compare(fieldName, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

namespace {

QString nextConnectionName()
{
    static int made = 0;
    return u"dao-%1"_s.arg(++made);
}

} // namespace

SqlConnection::SqlConnection(const QString& plugin)
    : name_(nextConnectionName()), database_(QSqlDatabase::addDatabase(plugin, name_)),
      passing_(database_)
{
}

SqlConnection::~SqlConnection()
{
    statements_.clear();
    passing_ = QSqlQuery();
    database_.close();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

namespace {

/// Enough for all that the forms ask; the pages of a grid have texts that seldom come again.
constexpr std::size_t keptStatements = 64;

QSqlQuery prepared(const QSqlDatabase& database, const QString& sql)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(sql); // a failure shows in its lastError
    return query;
}

} // namespace

bool mayChangeTheSchema(const QString& sql)
{
    for (const auto verb : {"SELECT"_L1, "WITH"_L1, "INSERT"_L1, "UPDATE"_L1, "DELETE"_L1}) {
        if (sql.startsWith(verb))
            return false;
    }
    return true;
}

QSqlQuery& SqlConnection::statement(const QString& sql)
{
    if (mayChangeTheSchema(sql)) {
        forgetSchema();
        statements_.clear();
        passing_ = prepared(database_, sql);
        return passing_;
    }
    const auto kept = statements_.find(sql);
    if (kept != statements_.end())
        return kept->second;
    if (statements_.size() >= keptStatements)
        statements_.clear();
    QSqlQuery query = prepared(database_, sql);
    if (query.lastError().isValid()) {
        passing_ = std::move(query);
        return passing_;
    }
    return statements_.emplace(sql, std::move(query)).first->second;
}

QSqlQuery& SqlConnection::passing()
{
    passing_ = QSqlQuery(database_);
    return passing_;
}

void Driver::commit()
{
    run(u"COMMIT"_s);
    inTransaction_ = false;
}

void Driver::rollback()
{
    inTransaction_ = false;
    run(u"ROLLBACK"_s);
}

void SqlConnection::drop(const QString& sql)
{
    statements_.erase(sql);
    passing_ = QSqlQuery(database_);
}

std::shared_ptr<SqlConnection> Driver::releaseConnection()
{
    if (failed_ || inTransaction_)
        return nullptr;
    return std::move(connection_);
}

void Driver::setConnection(std::shared_ptr<SqlConnection> connection)
{
    connection_ = std::move(connection);
}

QSqlQuery& Driver::execute(const QString& sql, const QVariantList& values)
{
    QSqlQuery& query = connection_->statement(sql);
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values[i]);
    if (!query.lastError().isValid())
        query.exec();
    return query;
}

int Driver::columnCount(const QSqlQuery& query) const
{
    return query.record().count();
}

QSqlQuery& Driver::start(const QString& sql, const QVariantList& values)
{
    QSqlQuery& query = execute(sql, values);
    if (query.lastError().isValid()) {
        const QSqlError failure = query.lastError();
        failed_ = true;
        connection_->drop(sql);
        throw error(failure);
    }
    return query;
}

const QSqlQuery& Driver::run(const QString& sql, const QVariantList& values)
{
    return start(sql, values);
}

std::vector<StoredValues> Driver::rows(const QString& sql, const QVariantList& values)
{
    QSqlQuery& query = start(sql, values);
    const int columns = columnCount(query);
    std::vector<StoredValues> all;
    while (query.next()) {
        StoredValues row;
        row.reserve(static_cast<std::size_t>(columns));
        for (int i = 0; i < columns; ++i)
            row.push_back(query.value(i));
        all.push_back(std::move(row));
    }
    const QSqlError failure = query.lastError();
    query.finish();
    if (failure.isValid()) {
        failed_ = true;
        connection_->drop(sql);
        throw error(failure);
    }
    return all;
}

RowNumbers Driver::rowNumbers(const QString& joined)
{
    RowNumbers numbers;
    if (joined.isEmpty())
        return numbers;
    numbers.reserve(static_cast<std::size_t>(joined.count(u',')) + 1);
    for (const QStringView each : QStringTokenizer(joined, u','))
        numbers.push_back(each.toLongLong());
    return numbers;
}

QString Driver::quoted(const QString& name)
{
    QString inner = name;
    return u'"' + inner.replace(u'"', u"\"\""_s) + u'"';
}

QString Driver::quoted(const QStringList& names)
{
    QStringList all;
    for (const QString& each : names)
        all.append(quoted(each));
    return all.join(u", "_s);
}

Together::Together(Driver& driver) : driver_(driver), own_(!driver.inTransaction())
{
    if (own_)
        driver_.begin();
}

Together::~Together()
{
    if (!own_)
        return;
    try {
        driver_.rollback();
    } catch (const runtime::RunTimeError&) {
        // The engine has rolled back by itself; the failure that led here is the one to tell.
        return;
    }
}

void Together::commit()
{
    if (own_)
        driver_.commit();
    own_ = false;
}

} // namespace dao
